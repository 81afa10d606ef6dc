// SPDX-License-Identifier: MIT
// Sums of products over terms: what their order of additions is, and how doubles do it two at a time.
#pragma once

#include <emmintrin.h>

#include <cstddef>

#include "zirk/real.hpp"

namespace zirk {

/// Denormal results count as zero while this lives: doubles only, the x87 unit keeps them.
class FlushTinyDoubles {
public:
    FlushTinyDoubles() : before_(_mm_getcsr()) { _mm_setcsr(before_ | 0x8040U); }
    ~FlushTinyDoubles() { _mm_setcsr(before_); }
    FlushTinyDoubles(const FlushTinyDoubles&) = delete;
    FlushTinyDoubles& operator=(const FlushTinyDoubles&) = delete;

private:
    unsigned before_;
};

/// x[0] * y[0] + x[1] * y[1] + ..., `count` products, in this order.
inline real sumOfProducts(const real* x, const real* y, std::size_t count) {
    real sum = 0;
    for (std::size_t i = 0; i < count; ++i) sum += x[i] * y[i];
    return sum;
}

/// The same for doubles, in four partial sums: product i goes to sum i mod 4; the result is (s0 + s2) + (s1 + s3). Up
/// to three products past the last are added too: one of their factors has to be zero, the other finite.
inline double sumOfProducts(const double* x, const double* y, std::size_t count) {
    __m128d even = _mm_setzero_pd();
    __m128d odd = _mm_setzero_pd();
    for (const double* const end = x + count; x < end; x += 4, y += 4) {
        even = _mm_add_pd(even, _mm_mul_pd(_mm_loadu_pd(x), _mm_loadu_pd(y)));
        odd = _mm_add_pd(odd, _mm_mul_pd(_mm_loadu_pd(x + 2), _mm_loadu_pd(y + 2)));
    }
    const __m128d sum = _mm_add_pd(even, odd);
    return _mm_cvtsd_f64(_mm_add_sd(sum, _mm_unpackhi_pd(sum, sum)));
}

}  // namespace zirk
