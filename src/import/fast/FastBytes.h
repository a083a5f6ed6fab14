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

namespace ambulet {

// Sixteen bytes at a time, by what every processor of the architecture has; one at a time where
// that is not known.

namespace FastBytes {

/// So many null characters come after the last byte: what is compared or looked for may be longer
/// than what there is.
inline constexpr std::size_t padding = 1040;

#if defined(__SSE2__)

using Mask = std::uint32_t;
inline constexpr unsigned maskBits = 1;

/// `maskBits` bits for each of 16 bytes, the first the lowest: set where the byte is not printable
/// ASCII, or is `quote`, "<" or "&".
inline Mask otherThanPlain(const char* at, char quote) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    // As signed numbers the bytes beyond ASCII are below the blank too.
    const __m128i others = _mm_or_si128(_mm_or_si128(_mm_cmplt_epi8(bytes, _mm_set1_epi8(' ')),
                                                     _mm_cmpeq_epi8(bytes, _mm_set1_epi8(quote))),
                                        _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')),
                                                     _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&'))));
    return static_cast<Mask>(_mm_movemask_epi8(others));
}

/// The same mask of the quotes.
inline Mask quotes(const char* at) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const __m128i quotes = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')),
                                        _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\'')));
    return static_cast<Mask>(_mm_movemask_epi8(quotes));
}

/// Whether the 16 bytes at both places are equal.
inline bool equal16(const char* one, const char* other) {
    const __m128i same = _mm_cmpeq_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(one)),
                                        _mm_loadu_si128(reinterpret_cast<const __m128i*>(other)));
    return _mm_movemask_epi8(same) == 0xFFFF;
}

#elif defined(__ARM_NEON) && defined(__aarch64__)

using Mask = std::uint64_t;
inline constexpr unsigned maskBits = 4;

inline Mask otherThanPlain(const char* at, char quote) {
    const int8x16_t bytes = vld1q_s8(reinterpret_cast<const signed char*>(at));
    const uint8x16_t others =
        vorrq_u8(vorrq_u8(vcltq_s8(bytes, vdupq_n_s8(' ')),
                          vceqq_s8(bytes, vdupq_n_s8(static_cast<signed char>(quote)))),
                 vorrq_u8(vceqq_s8(bytes, vdupq_n_s8('<')), vceqq_s8(bytes, vdupq_n_s8('&'))));
    return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(vreinterpretq_u16_u8(others), 4)), 0);
}

inline Mask quotes(const char* at) {
    const int8x16_t bytes = vld1q_s8(reinterpret_cast<const signed char*>(at));
    const uint8x16_t quotes =
        vorrq_u8(vceqq_s8(bytes, vdupq_n_s8('"')), vceqq_s8(bytes, vdupq_n_s8('\'')));
    return vget_lane_u64(vreinterpret_u64_u8(vshrn_n_u16(vreinterpretq_u16_u8(quotes), 4)), 0);
}

inline bool equal16(const char* one, const char* other) {
    const uint8x16_t same = vceqq_u8(vld1q_u8(reinterpret_cast<const unsigned char*>(one)),
                                     vld1q_u8(reinterpret_cast<const unsigned char*>(other)));
    return vminvq_u8(same) == 0xFF;
}

#else

using Mask = std::uint32_t;
inline constexpr unsigned maskBits = 1;

inline Mask otherThanPlain(const char* at, char quote) {
    Mask mask = 0;
    for (unsigned index = 0; index < 16; ++index) {
        const char byte = at[index];
        const auto code = static_cast<unsigned char>(byte);
        const bool isPlain =
            ' ' <= code && code < 0x80 && byte != quote && byte != '<' && byte != '&';
        mask |= Mask{!isPlain} << index;
    }
    return mask;
}

inline Mask quotes(const char* at) {
    Mask mask = 0;
    for (unsigned index = 0; index < 16; ++index) {
        mask |= Mask{at[index] == '"' || at[index] == '\''} << index;
    }
    return mask;
}

inline bool equal16(const char* one, const char* other) {
    return std::memcmp(one, other, 16) == 0;
}

#endif

/// How many bytes from `at` on are printable ASCII, and neither `quote` nor "<" nor "&".
inline std::size_t plainLength(const char* at, char quote) {
    for (std::size_t length = 0;; length += 16) {
        const Mask mask = otherThanPlain(at + length, quote);
        if (mask != 0) {
            return length + static_cast<std::size_t>(std::countr_zero(mask)) / maskBits;
        }
    }
}

/// How many bytes from `at` on come before a quote; `most` or more if there is none before that.
inline std::size_t lengthToQuote(const char* at, std::size_t most) {
    for (std::size_t length = 0; length < most; length += 16) {
        const Mask mask = quotes(at + length);
        if (mask != 0) {
            return length + static_cast<std::size_t>(std::countr_zero(mask)) / maskBits;
        }
    }
    return most;
}

/// Whether so many bytes are plain, which are `mostArePlain` or fewer.
inline constexpr std::size_t mostArePlain = 32;
inline bool arePlain(const char* at, std::size_t size, char quote) {
    if (size < 16) {
        return (otherThanPlain(at, quote) & ((Mask{1} << (size * maskBits)) - 1)) == 0;
    }
    return (otherThanPlain(at, quote) | otherThanPlain(at + size - 16, quote)) == 0;
}

template <typename Number>
Number load(const char* at) {
    Number number;
    std::memcpy(&number, at, sizeof number);
    return number;
}

/// How many of the `size` bytes at both places, from the first on, are equal.
inline std::size_t commonLength(const char* one, const char* other, std::size_t size) {
    std::size_t length = 0;
    while (length + 16 <= size && equal16(one + length, other + length)) {
        length += 16;
    }
    while (length < size && one[length] == other[length]) {
        ++length;
    }
    return length;
}

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
    if (size >= 8) {
        return load<std::uint64_t>(one) == load<std::uint64_t>(other) &&
               load<std::uint64_t>(one + size - 8) == load<std::uint64_t>(other + size - 8);
    }
    return std::memcmp(one, other, size) == 0;
}

/// The same number for equal bytes, and for others most likely another one.
inline std::uint64_t hash(const char* at, std::size_t size) {
    // Independent of each other, so that the processor does many at once.
    const auto part = [](std::uint64_t bytes, std::size_t from) {
        const std::uint64_t product = (bytes + from) * 0x9E3779B97F4A7C15ULL;
        return product ^ (product >> 32U);
    };
    if (size < 8) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, at, size);
        return size + part(bytes, 0);
    }
    std::uint64_t sum = size;
    for (std::size_t from = 0; from < size - 8; from += 8) {
        sum += part(load<std::uint64_t>(at + from), from);
    }
    return sum + part(load<std::uint64_t>(at + size - 8), size);
}

}  // namespace FastBytes

}  // namespace ambulet
