#include "import/fast/FastBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace ambulet {

namespace {

const std::string padding(FastBytes::padding, '\0');

bool isPlain(char byte, char quote) {
    const auto code = static_cast<unsigned char>(byte);
    return 0x20 <= code && code <= 0x7F && byte != quote && byte != '<' && byte != '&';
}

TEST(FastBytes, plainBytesArePrintableASCIIThatNeitherEndsAValueNorNeedsALook) {
    for (const char quote : {'"', '\''}) {
        for (int value = 0; value < 256; ++value) {
            const char byte = static_cast<char>(value);
            const std::string text = byte + padding;
            EXPECT_EQ(FastBytes::plainLength(text.data(), quote) == 1, isPlain(byte, quote))
                << value;
            EXPECT_EQ(FastBytes::arePlain(text.data(), 1, quote), isPlain(byte, quote)) << value;
        }
    }
}

TEST(FastBytes, theFirstOtherByteIsFoundWhereverItIs) {
    for (std::size_t place = 0; place < 70; ++place) {
        for (const char other : {'"', '<', '&', '\n', '\x80', '\0'}) {
            std::string text(100, 'a');
            text[place] = other;
            EXPECT_EQ(FastBytes::plainLength((text + padding).data(), '"'), place);
        }
    }
}

TEST(FastBytes, upTo32BytesArePlainIfNoneOfThemIsAnother) {
    for (std::size_t size = 0; size <= 32; ++size) {
        for (std::size_t place = 0; place < 40; ++place) {
            std::string text(40, 'a');
            text[place] = '&';
            EXPECT_EQ(FastBytes::arePlain((text + padding).data(), size, '"'), place >= size)
                << size << " " << place;
        }
    }
}

TEST(FastBytes, theNextQuoteIsFoundOfEitherKind) {
    for (const char quote : {'"', '\''}) {
        for (std::size_t place = 0; place < 64; ++place) {
            std::string text(64, '&');
            text[place] = quote;
            EXPECT_EQ(FastBytes::lengthToQuote((text + padding).data(), 64), place);
        }
    }
    EXPECT_GE(FastBytes::lengthToQuote(std::string(100, '#').data(), 64), 64U);
}

TEST(FastBytes, bytesAreEqualOrHaveAFirstDifference) {
    const std::string one(200, 'a');
    for (const std::size_t size : {0U, 1U, 7U, 8U, 15U, 16U, 17U, 40U, 64U, 65U, 150U}) {
        EXPECT_TRUE(FastBytes::equal(one.data(), std::string(200, 'a').data(), size));
        EXPECT_EQ(FastBytes::commonLength(one.data(), std::string(200, 'a').data(), size), size);
        for (std::size_t place = 0; place < 160; ++place) {
            std::string other = one;
            other[place] = 'b';
            EXPECT_EQ(FastBytes::equal(one.data(), other.data(), size), place >= size);
            EXPECT_EQ(FastBytes::commonLength(one.data(), other.data(), size),
                      std::min(place, size));
        }
    }
}

}  // namespace

}  // namespace ambulet
