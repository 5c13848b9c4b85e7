// What standard C++ has no word for: processor hints, several numbers in one step, checked arithmetic. Each stands here
// alone, in the compiler's form and in a plain one that gives the same answers to the last bit; QUOR_PLAIN asks for the
// plain one, and the native tests build both.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#if defined(__GNUC__) && !defined(QUOR_PLAIN)
#define QUOR_GNU_WORDS
#if defined(__SSE2__)
#define QUOR_SSE2_WORDS
#include <emmintrin.h>
#endif
#endif

// Whether the compiler knows how long a text is.
#if defined(QUOR_GNU_WORDS)
#define QUOR_KNOWS_LENGTH(text) __builtin_constant_p(__builtin_strlen(text))
#else
#define QUOR_KNOWS_LENGTH(text) false
#endif

// The compiler checks formats against the C99 rules that the framework follows (the old runtime DLL's own differ).
#if !defined(QUOR_GNU_WORDS)
#define QUOR_PRINTF(formatIndex, firstArgument)
#elif defined(_WIN32) && !defined(__clang__)
#define QUOR_PRINTF(formatIndex, firstArgument) __attribute__((format(gnu_printf, formatIndex, firstArgument)))
#else
#define QUOR_PRINTF(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))
#endif

namespace quor {

// Asks for a line of memory that will be read, or written, soon. Any address will do.
inline void prefetch([[maybe_unused]] const void* address) {
#if defined(QUOR_GNU_WORDS)
    __builtin_prefetch(address);
#endif
}
inline void prefetchToWrite([[maybe_unused]] const void* address) {
#if defined(QUOR_GNU_WORDS)
    __builtin_prefetch(address, 1);
#endif
}

// True where the exact result does not fit; `result` is then what is left of it.
template <class Number>
bool addOverflows(Number a, Number b, Number& result) {
#if defined(QUOR_GNU_WORDS)
    return __builtin_add_overflow(a, b, &result);
#else
    using Bits = std::make_unsigned_t<Number>;
    result = static_cast<Number>(static_cast<Bits>(static_cast<Bits>(a) + static_cast<Bits>(b)));
    return b >= 0 ? result < a : result > a;
#endif
}
template <class Number>
bool subtractOverflows(Number a, Number b, Number& result) {
#if defined(QUOR_GNU_WORDS)
    return __builtin_sub_overflow(a, b, &result);
#else
    using Bits = std::make_unsigned_t<Number>;
    result = static_cast<Number>(static_cast<Bits>(static_cast<Bits>(a) - static_cast<Bits>(b)));
    return b >= 0 ? result > a : result < a;
#endif
}

// Two doubles that are multiplied at once.
#if defined(QUOR_GNU_WORDS)
using DoublePair = double __attribute__((vector_size(16)));
#else
struct DoublePair {
    double both[2];

    const double& operator[](std::size_t index) const { return both[index]; }
    DoublePair& operator*=(const DoublePair& other) {
        both[0] *= other.both[0];
        both[1] *= other.both[1];
        return *this;
    }
    friend DoublePair operator*(DoublePair a, const DoublePair& b) { return a *= b; }
};
#endif

#if defined(QUOR_SSE2_WORDS)

inline __m128i fourNumbersAt(const std::int32_t* numbers) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(numbers));
}

// The sum of four numbers a step; the total must fit.
inline int sumOfNumbers(const std::int32_t* numbers, int count) {
    __m128i sums = _mm_setzero_si128();
    int i = 0;
    for (; i + 4 <= count; i += 4) sums = _mm_add_epi32(sums, fourNumbersAt(numbers + i));
    alignas(16) std::int32_t parts[4];
    _mm_store_si128(reinterpret_cast<__m128i*>(parts), sums);
    int sum = parts[0] + parts[1] + parts[2] + parts[3];
    for (; i < count; ++i) sum += numbers[i];
    return sum;
}

// A bit for each of the numbers, set where it is above the limit.
inline unsigned bitsAbove4(const std::int32_t* numbers, std::int32_t limit) {
    return static_cast<unsigned>(
        _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpgt_epi32(fourNumbersAt(numbers), _mm_set1_epi32(limit)))));
}
inline unsigned bitsAbove16(const std::int32_t* numbers, std::int32_t limit) {
    const __m128i four = _mm_set1_epi32(limit);
    const auto above = [&](int at) { return _mm_cmpgt_epi32(fourNumbersAt(numbers + at), four); };
    const __m128i low = _mm_packs_epi32(above(0), above(4)), high = _mm_packs_epi32(above(8), above(12));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

// The sum of the bytes where the mask has ones; `size` is a multiple of 16.
inline int sumOfBytes(const std::uint8_t* bytes, const std::uint8_t* mask, std::size_t size) {
    const __m128i zero = _mm_setzero_si128();
    __m128i sums = zero;
    for (std::size_t i = 0; i < size; i += 16) {
        const __m128i some = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + i));
        const __m128i wanted = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask + i));
        sums = _mm_add_epi64(sums, _mm_sad_epu8(_mm_and_si128(some, wanted), zero));
    }
    return _mm_cvtsi128_si32(_mm_add_epi64(sums, _mm_unpackhi_epi64(sums, sums)));
}

#else

inline int sumOfNumbers(const std::int32_t* numbers, int count) {
    int sum = 0;
    for (int i = 0; i < count; ++i) sum += numbers[i];
    return sum;
}

template <int kCount>
unsigned bitsAbove(const std::int32_t* numbers, std::int32_t limit) {
    unsigned bits = 0;
    for (int i = 0; i < kCount; ++i) bits |= (numbers[i] > limit ? 1U : 0U) << i;
    return bits;
}
inline unsigned bitsAbove4(const std::int32_t* numbers, std::int32_t limit) { return bitsAbove<4>(numbers, limit); }
inline unsigned bitsAbove16(const std::int32_t* numbers, std::int32_t limit) { return bitsAbove<16>(numbers, limit); }

inline int sumOfBytes(const std::uint8_t* bytes, const std::uint8_t* mask, std::size_t size) {
    int sum = 0;
    for (std::size_t i = 0; i < size; ++i) sum += bytes[i] & mask[i];
    return sum;
}

#endif

}  // namespace quor
