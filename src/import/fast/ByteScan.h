#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

/// What every processor of the architecture has: two vectors of 16 bytes.
class Baseline {
  public:
    /// The bytes in which the two places differ.
    static Mask differing(const char* one, const char* other) {
        return both([=](std::size_t at) { return load(one + at) != load(other + at); });
    }

    /// The bytes outside their ranges. The range of a byte begins at the byte of `lowest` at the
    /// same position, ends after as many more as the byte of `spans` says, and omits the one at
    /// distance `gap` from the lowest.
    static Mask outside(const char* at, const char* lowest, const char* spans, char gap) {
        return both([=](std::size_t half) {
            const Unsigned above = Unsigned(load(at + half)) - Unsigned(load(lowest + half));
            return Vector(above > Unsigned(load(spans + half))) | (Vector(above) == gap);
        });
    }

    /// The bytes that are control characters (except U+007F), non-ASCII, `byte`, "<" or "&".
    static Mask special(const char* at, char byte) {
        return both([=](std::size_t half) {
            const Vector bytes = load(at + half);
            // As signed numbers, non-ASCII bytes are negative, so they are below the blank, too.
            return (bytes < ' ') | (bytes == byte) | (bytes == '<') | (bytes == '&');
        });
    }

    /// The bytes that are quotes of either kind.
    static Mask quotes(const char* at) {
        return both([=](std::size_t half) {
            const Vector bytes = load(at + half);
            return (bytes == '"') | (bytes == '\'');
        });
    }

  private:
    using Vector [[gnu::vector_size(16)]] = signed char;
    using Unsigned [[gnu::vector_size(16)]] = unsigned char;

    static Vector load(const char* at) {
        Vector bytes;
        std::memcpy(&bytes, at, sizeof bytes);
        return bytes;
    }

    template <class Half>
    static Mask both(Half half) {
        return bits(half(0)) | bits(half(16)) << 16U;
    }

    /// One bit for each byte. In each byte, either all bits are set or none.
    static Mask bits(Vector bytes) {
#if defined(__SSE2__)
        return static_cast<Mask>(_mm_movemask_epi8(reinterpret_cast<__m128i>(bytes)));
#elif defined(__ARM_NEON) && defined(__aarch64__)
        constexpr Vector places = {1, 2, 4, 8, 16, 32, 64, -128, 1, 2, 4, 8, 16, 32, 64, -128};
        const auto set = reinterpret_cast<uint8x16_t>(bytes & places);
        return Mask{vaddv_u8(vget_low_u8(set))} | Mask{vaddv_u8(vget_high_u8(set))} << 8U;
#else
        Mask mask = 0;
        for (unsigned index = 0; index < sizeof bytes; ++index) {
            mask |= Mask{bytes[index] != 0} << index;
        }
        return mask;
#endif
    }
};

#if defined(__SSE2__)

/// The functions of the hot loop with one vector of 32 bytes, for processors with AVX2. The
/// compiler can inline them only into functions that are compiled for AVX2.
class Avx2 {
  public:
    [[gnu::target("avx2")]] static Mask outside(const char* at, const char* lowest,
                                                const char* spans, char gap) {
        const __m256i above = _mm256_sub_epi8(load(at), load(lowest));
        const __m256i isInSpan = _mm256_cmpeq_epi8(_mm256_min_epu8(above, load(spans)), above);
        const __m256i isGap = _mm256_cmpeq_epi8(above, _mm256_set1_epi8(gap));
        return ~bits(_mm256_andnot_si256(isGap, isInSpan));
    }

    [[gnu::target("avx2")]] static Mask special(const char* at, char byte) {
        const auto bytes = reinterpret_cast<Vector>(load(at));
        return bits((bytes < ' ') | (bytes == byte) | (bytes == '<') | (bytes == '&'));
    }

  private:
    using Vector [[gnu::vector_size(32)]] = signed char;

    [[gnu::target("avx2")]] static __m256i load(const char* at) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
    }
    template <class Bytes>
    [[gnu::target("avx2")]] static Mask bits(Bytes bytes) {
        return static_cast<Mask>(_mm256_movemask_epi8(reinterpret_cast<__m256i>(bytes)));
    }
};

#endif

/// The first byte from `at` on that is special. There is always one, because a null character
/// ends every text.
inline const char* findSpecial(const char* at, char byte) {
    for (;; at += width) {
        if (const Mask mask = Baseline::special(at, byte); mask != 0) {
            return at + std::countr_zero(mask);
        }
    }
}

}  // namespace ByteScan

}  // namespace ambulet
