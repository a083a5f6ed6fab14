#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

// Sixteen bytes at a time, by what every processor of the architecture has; one at a time where
// that is not known.

namespace FastBytes {

/// So many null characters come after the last byte: what is compared or looked for may be longer
/// than what there is.
inline constexpr std::size_t padding = 1040;

inline bool isPlain(char byte, char quote) {
    return byte >= ' ' && byte != quote && byte != '<' && byte != '&';
}

#if defined(__SSE2__)

/// How many bytes from `at` on are printable ASCII, and neither `quote` nor '<' nor '&'.
inline std::size_t plainLength(const char* at, char quote) {
    const __m128i blank = _mm_set1_epi8(' ');
    const __m128i end = _mm_set1_epi8(quote);
    const __m128i tag = _mm_set1_epi8('<');
    const __m128i reference = _mm_set1_epi8('&');
    for (std::size_t length = 0;; length += 16) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + length));
        // As signed numbers the bytes beyond ASCII are below the blank too.
        const __m128i others = _mm_or_si128(
            _mm_or_si128(_mm_cmplt_epi8(bytes, blank), _mm_cmpeq_epi8(bytes, end)),
            _mm_or_si128(_mm_cmpeq_epi8(bytes, tag), _mm_cmpeq_epi8(bytes, reference)));
        const auto mask = static_cast<unsigned>(_mm_movemask_epi8(others));
        if (mask != 0) {
            return length + static_cast<std::size_t>(std::countr_zero(mask));
        }
    }
}

/// Whether the 16 bytes at both places are equal.
inline bool equal16(const char* one, const char* other) {
    const __m128i same = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(one)),
                                        _mm_loadu_si128(reinterpret_cast<const __m128i*>(other)));
    return _mm_movemask_epi8(same) == 0xFFFF;
}

#elif defined(__ARM_NEON) && defined(__aarch64__)

inline std::size_t plainLength(const char* at, char quote) {
    const int8x16_t blank = vdupq_n_s8(' ');
    const int8x16_t end = vdupq_n_s8(static_cast<signed char>(quote));
    const int8x16_t tag = vdupq_n_s8('<');
    const int8x16_t reference = vdupq_n_s8('&');
    for (std::size_t length = 0;; length += 16) {
        const int8x16_t bytes = vld1q_s8(reinterpret_cast<const signed char*>(at + length));
        const uint8x16_t others =
            vorrq_u8(vorrq_u8(vcltq_s8(bytes, blank), vceqq_s8(bytes, end)),
                     vorrq_u8(vceqq_s8(bytes, tag), vceqq_s8(bytes, reference)));
        // Four bits a byte.
        const std::uint64_t mask =
            vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(vreinterpretq_u16_u8(others), 4)), 0);
        if (mask != 0) {
            return length + static_cast<std::size_t>(std::countr_zero(mask)) / 4;
        }
    }
}

inline bool equal16(const char* one, const char* other) {
    const uint8x16_t same = vceqq_u8(vld1q_u8(reinterpret_cast<const unsigned char*>(one)),
                                     vld1q_u8(reinterpret_cast<const unsigned char*>(other)));
    return vminvq_u8(same) == 0xFF;
}

#else

inline std::size_t plainLength(const char* at, char quote) {
    std::size_t length = 0;
    // A char may be signed or not; beyond ASCII is not plain.
    while (isPlain(at[length], quote) && static_cast<unsigned char>(at[length]) < 0x80) {
        ++length;
    }
    return length;
}

inline bool equal16(const char* one, const char* other) {
    return std::memcmp(one, other, 16) == 0;
}

#endif

/// Whether the `size` bytes at both places are equal, of which there are 16 or more.
inline bool equalLong(const char* one, const char* other, std::size_t size) {
    if (size > 64) {
        return std::memcmp(one, other, size) == 0;  // which knows wider vectors
    }
    const std::size_t last = size - 16;
    for (std::size_t at = 0; at < last; at += 16) {
        if (!equal16(one + at, other + at)) {
            return false;
        }
    }
    return equal16(one + last, other + last);
}

/// Whether the `size` bytes at both places are equal.
inline bool equal(const char* one, const char* other, std::size_t size) {
    if (size >= 16) {
        return equalLong(one, other, size);
    }
    const auto load = [](const char* at, auto number) {
        std::memcpy(&number, at, sizeof number);
        return number;
    };
    if (size >= 8) {
        return load(one, std::uint64_t{}) == load(other, std::uint64_t{}) &&
               load(one + size - 8, std::uint64_t{}) == load(other + size - 8, std::uint64_t{});
    }
    return std::memcmp(one, other, size) == 0;
}

}  // namespace FastBytes
