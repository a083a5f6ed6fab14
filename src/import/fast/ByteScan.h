#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <immintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace ambulet {

/// Looks at 32 bytes at a time. Results are masks with a bit for each byte, the first the lowest.
namespace ByteScan {

using Mask = std::uint32_t;
inline constexpr std::size_t width = 32;

/// The bits of the first `count` bytes; all bits from `width` on.
constexpr Mask firstBytes(std::size_t count) {
    return count >= width ? ~Mask{0} : (Mask{1} << count) - 1;
}

#if defined(__SSE2__)

/// What every x86-64 processor has.
struct Baseline {
    /// The bytes in which the two places differ.
    static Mask differing(const char* one, const char* other) {
        const auto half = [&](std::size_t at) {
            return _mm_movemask_epi8(_mm_cmpeq_epi8(load(one + at), load(other + at)));
        };
        return ~both(half(0), half(16));
    }

    /// The bytes that are `byte`.
    static Mask equal(const char* at, char byte) {
        const auto half = [byte](__m128i bytes) {
            return _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(byte)));
        };
        return both(half(load(at)), half(load(at + 16)));
    }

    /// The bytes that are not printable ASCII, or are `quote`, "<" or "&".
    static Mask special(const char* at, char quote) {
        const auto half = [quote](__m128i bytes) {
            // As signed numbers, the bytes beyond ASCII are below the blank, too.
            return _mm_movemask_epi8(
                _mm_or_si128(_mm_or_si128(_mm_cmplt_epi8(bytes, _mm_set1_epi8(' ')),
                                          _mm_cmpeq_epi8(bytes, _mm_set1_epi8(quote))),
                             _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('<')),
                                          _mm_cmpeq_epi8(bytes, _mm_set1_epi8('&')))));
        };
        return both(half(load(at)), half(load(at + 16)));
    }

  private:
    static __m128i load(const char* at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    }
    static Mask both(int low, int high) {
        return static_cast<Mask>(low) | static_cast<Mask>(high) << 16U;
    }
};

/// The same in half as many instructions, where the processor has AVX2.
struct Avx2 {
    [[gnu::target("avx2")]] static inline Mask differing(const char* one, const char* other) {
        return ~static_cast<Mask>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(load(one), load(other))));
    }

    [[gnu::target("avx2")]] static inline Mask equal(const char* at, char byte) {
        return static_cast<Mask>(
            _mm256_movemask_epi8(_mm256_cmpeq_epi8(load(at), _mm256_set1_epi8(byte))));
    }

    [[gnu::target("avx2")]] static inline Mask special(const char* at, char quote) {
        const __m256i bytes = load(at);
        return static_cast<Mask>(_mm256_movemask_epi8(
            _mm256_or_si256(_mm256_or_si256(_mm256_cmpgt_epi8(_mm256_set1_epi8(' '), bytes),
                                            _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(quote))),
                            _mm256_or_si256(_mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('<')),
                                            _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('&'))))));
    }

  private:
    [[gnu::target("avx2")]] static inline __m256i load(const char* at) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
    }
};

#elif defined(__ARM_NEON) && defined(__aarch64__)

/// What every 64-bit Arm processor has.
struct Baseline {
    static Mask differing(const char* one, const char* other) {
        const auto half = [&](std::size_t at) {
            return mask(vmvnq_u8(vceqq_u8(load(one + at), load(other + at))));
        };
        return half(0) | half(16) << 16U;
    }

    static Mask equal(const char* at, char byte) {
        const uint8x16_t wanted = vdupq_n_u8(static_cast<unsigned char>(byte));
        const auto half = [&](std::size_t from) { return mask(vceqq_u8(load(at + from), wanted)); };
        return half(0) | half(16) << 16U;
    }

    static Mask special(const char* at, char quote) {
        const auto half = [quote](uint8x16_t bytes) {
            const uint8x16_t unprintable = vcltq_s8(vreinterpretq_s8_u8(bytes), vdupq_n_s8(' '));
            const auto equal = [bytes](char byte) {
                return vceqq_u8(bytes, vdupq_n_u8(static_cast<unsigned char>(byte)));
            };
            return mask(
                vorrq_u8(vorrq_u8(unprintable, equal(quote)), vorrq_u8(equal('<'), equal('&'))));
        };
        return half(load(at)) | half(load(at + 16)) << 16U;
    }

  private:
    static uint8x16_t load(const char* at) {
        return vld1q_u8(reinterpret_cast<const unsigned char*>(at));
    }
    /// A bit for each byte, of which all bits are equal.
    static Mask mask(uint8x16_t bytes) {
        static constexpr std::uint8_t bits[] = {1, 2, 4, 8, 16, 32, 64, 128,
                                                1, 2, 4, 8, 16, 32, 64, 128};
        const uint8x16_t set = vandq_u8(bytes, vld1q_u8(bits));
        return Mask{vaddv_u8(vget_low_u8(set))} | Mask{vaddv_u8(vget_high_u8(set))} << 8U;
    }
};

#else

/// One byte after the other, on any processor.
struct Baseline {
    static Mask differing(const char* one, const char* other) {
        Mask mask = 0;
        for (unsigned index = 0; index < width; ++index) {
            mask |= Mask{one[index] != other[index]} << index;
        }
        return mask;
    }

    static Mask equal(const char* at, char byte) {
        Mask mask = 0;
        for (unsigned index = 0; index < width; ++index) {
            mask |= Mask{at[index] == byte} << index;
        }
        return mask;
    }

    static Mask special(const char* at, char quote) {
        Mask mask = 0;
        for (unsigned index = 0; index < width; ++index) {
            const char byte = at[index];
            const bool isPrintable = ' ' <= byte && static_cast<unsigned char>(byte) < 0x80;
            mask |= Mask{!isPrintable || byte == quote || byte == '<' || byte == '&'} << index;
        }
        return mask;
    }
};

#endif

/// The first byte from `at` on that is not printable ASCII, or is `quote`, "<" or "&". A null
/// character ends every text, so there is one.
inline const char* findSpecial(const char* at, char quote) {
    for (;; at += width) {
        if (const Mask mask = Baseline::special(at, quote); mask != 0) {
            return at + std::countr_zero(mask);
        }
    }
}

}  // namespace ByteScan

}  // namespace ambulet
