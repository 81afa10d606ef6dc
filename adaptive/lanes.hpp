// SPDX-License-Identifier: MIT
// Sums of products over terms: what their order of additions is, and how doubles do it four at a time.
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

/// As the compiler's own vectors: four doubles are two registers of the oldest processors, one of those with AVX.
using TwoDoubles = double __attribute__((vector_size(16)));
using FourDoubles = double __attribute__((vector_size(32)));

/// The same in memory, at any address of a double.
using TwoDoublesAnywhere = double __attribute__((vector_size(16), aligned(8), may_alias));
using FourDoublesAnywhere = double __attribute__((vector_size(32), aligned(8), may_alias));

inline const TwoDoublesAnywhere& twoAt(const double* x) { return *reinterpret_cast<const TwoDoublesAnywhere*>(x); }
inline const FourDoublesAnywhere& fourAt(const double* x) { return *reinterpret_cast<const FourDoublesAnywhere*>(x); }

/// s0 + s2 and s1 + s3 of four sums.
inline TwoDoubles lowAndHigh(const FourDoubles& sums) {
    return __builtin_shufflevector(sums, sums, 0, 1) + __builtin_shufflevector(sums, sums, 2, 3);
}

/// The same for doubles: four sums, of every fourth product each, as far as four more products come; these as two sums,
/// s0 + s2 and s1 + s3, with the next two products; these as one, with the last product.
///
/// No cell past the last is read: where one was written just before, the processor would wait for it.
inline double sumOfProducts(const double* x, const double* y, std::size_t count) {
    FourDoubles four{};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) four += fourAt(x + i) * fourAt(y + i);
    TwoDoubles two = lowAndHigh(four);
    if ((count & 2) != 0) {
        two += twoAt(x + i) * twoAt(y + i);
        i += 2;
    }
    const double sum = two[0] + two[1];
    return (count & 1) != 0 ? sum + x[i] * y[i] : sum;
}

/// Two sums of as many products.
template <class T>
struct TwoSums {
    T a;
    T b;
};

/// The sums over x[i] * y[i] and u[i] * v[i], each as by itself; neither waits for the other.
inline TwoSums<real> sumsOfProducts(const real* x, const real* y, const real* u, const real* v, std::size_t count) {
    TwoSums<real> sums{0, 0};
    for (std::size_t i = 0; i < count; ++i) {
        sums.a += x[i] * y[i];
        sums.b += u[i] * v[i];
    }
    return sums;
}

inline TwoSums<double> sumsOfProducts(const double* x, const double* y, const double* u, const double* v,
                                      std::size_t count) {
    FourDoubles fourA{};
    FourDoubles fourB{};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        fourA += fourAt(x + i) * fourAt(y + i);
        fourB += fourAt(u + i) * fourAt(v + i);
    }
    TwoDoubles twoA = lowAndHigh(fourA);
    TwoDoubles twoB = lowAndHigh(fourB);
    if ((count & 2) != 0) {
        twoA += twoAt(x + i) * twoAt(y + i);
        twoB += twoAt(u + i) * twoAt(v + i);
        i += 2;
    }
    TwoSums<double> sums{twoA[0] + twoA[1], twoB[0] + twoB[1]};
    if ((count & 1) != 0) {
        sums.a += x[i] * y[i];
        sums.b += u[i] * v[i];
    }
    return sums;
}

}  // namespace zirk
