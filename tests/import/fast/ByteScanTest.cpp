#include "import/fast/ByteScan.h"

#include <gtest/gtest.h>

#include <string>

namespace ambulet {

namespace {

using namespace ByteScan;

bool isPlain(char byte, char quote) {
    const auto code = static_cast<unsigned char>(byte);
    return 0x20 <= code && code <= 0x7F && byte != quote && byte != '<' && byte != '&';
}

template <class Vectors>
void expectSpecialBytes() {
    for (const char quote : {'"', '\''}) {
        for (int value = 0; value < 256; ++value) {
            const char byte = static_cast<char>(value);
            for (std::size_t place = 0; place < width; ++place) {
                std::string text(width, 'a');
                text[place] = byte;
                const Mask expected = isPlain(byte, quote) ? 0 : Mask{1} << place;
                EXPECT_EQ(Vectors::special(text.data(), quote), expected) << value << " " << place;
            }
        }
    }
}

template <class Vectors>
void expectQuotes() {
    for (int value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        for (std::size_t place = 0; place < width; ++place) {
            std::string text(width, 'a');
            text[place] = byte;
            const bool isQuote = byte == '"' || byte == '\'';
            EXPECT_EQ(Vectors::quotes(text.data()), isQuote ? Mask{1} << place : 0);
        }
    }
}

template <class Vectors>
void expectDifferingBytes() {
    const std::string one(width, 'a');
    EXPECT_EQ(Vectors::differing(one.data(), std::string(one).data()), 0U);
    for (std::size_t place = 0; place < width; ++place) {
        for (const char byte : {'b', '\0', '\xFF'}) {
            std::string other = one;
            other[place] = byte;
            EXPECT_EQ(Vectors::differing(one.data(), other.data()), Mask{1} << place);
        }
    }
}

/// Compares all bytes with several ranges. A range consists of the `span` + 1 values from `lowest`
/// on, except `lowest` + `gap`.
template <class Vectors>
void expectBytesOutside() {
    for (const int lowest : {0, 0x28, 0x80, 0xFF}) {
        for (const int span : {0, 1, 0x56, 0xFF}) {
            for (int value = 0; value < 256; ++value) {
                constexpr int gap = 0x14;
                const int above = (value - lowest + 256) % 256;
                const std::size_t place = static_cast<std::size_t>(value) % width;
                // All other bytes are `lowest`.
                std::string text(width, static_cast<char>(lowest));
                text[place] = static_cast<char>(value);
                const Mask expected = above > span || above == gap ? Mask{1} << place : 0;
                EXPECT_EQ(Vectors::outside(
                              text.data(), std::string(width, static_cast<char>(lowest)).data(),
                              std::string(width, static_cast<char>(span)).data(), char{gap}),
                          expected)
                    << lowest << " " << span << " " << value;
            }
        }
    }
}

TEST(ByteScan, theQuoteTheLessThanSignTheAmpersandNonASCIIAndBytesBelow32AreSpecial) {
    expectSpecialBytes<Baseline>();
}

TEST(ByteScan, masksMarkQuotesOfBothKinds) {
    expectQuotes<Baseline>();
}

TEST(ByteScan, masksMarkBytesOutsideARangeWithAGap) {
    expectBytesOutside<Baseline>();
}

TEST(ByteScan, masksMarkDifferingBytes) {
    expectDifferingBytes<Baseline>();
}

#if defined(__SSE2__)
TEST(ByteScan, avx2ComputesTheSameMasks) {
    if (__builtin_cpu_supports("avx2")) {
        expectSpecialBytes<Avx2>();
        expectBytesOutside<Avx2>();
    }
}
#endif

TEST(ByteScan, theFirstSpecialByteIsFoundAtEveryPosition) {
    for (std::size_t place = 0; place < 70; ++place) {
        for (const char special : {'"', '<', '&', '\n', '\x80', '\0'}) {
            std::string text(100, 'a');
            text[place] = special;
            text += std::string(width, '\0');
            EXPECT_EQ(findSpecial(text.data(), '"') - text.data(),
                      static_cast<std::ptrdiff_t>(place));
        }
    }
}

}  // namespace

}  // namespace ambulet
