// SPDX-License-Identifier: MIT
// The loop over codes: the order of additions and multiplications inside each term is that of the nodes.
#pragma once

#include "series/lanes.hpp"
#include "series/term_arrays.hpp"

namespace zirk {

/// What the codes of one order work on.
template <class Cell>
struct OrderCells {
    std::size_t k;
    Cell* row;
    Cell* nextRow;
    Cell* now;
    /// Of this order, and those of order 0: the constants.
    const Cell* fixed;
    const Cell* constants;
    /// Term k of the first array; how many cells further that of the next one stands.
    Cell* arrays;
    std::size_t stride;
    real factor;

    Cell& kept(ArrayIndex array) const { return arrays[array * stride]; }
    const Cell& first(ArrayIndex array) const { return *(&kept(array) - k); }
};

/// A[k] * B[0] + A[k - 1] * B[1] + ..., `count` products.
template <class Cell>
[[gnu::always_inline]] inline real sumOne(const OrderCells<Cell>& c, ArrayIndex a, ArrayIndex b, std::size_t count) {
    const Cell* falling = &c.kept(a);
    const Cell* rising = &c.first(b);
    real sum = 0;
    for (; count > 0; --count) sum = sum + static_cast<real>(*falling--) * *rising++;
    return sum;
}

struct TwoSums {
    real first;
    real second;
};

/// Two such sums: the additions of one fill the waiting times of the other.
template <class Cell>
[[gnu::always_inline]] inline TwoSums sumTwo(const OrderCells<Cell>& c, ArrayIndex a1, ArrayIndex b1, ArrayIndex a2,
                                             ArrayIndex b2, std::size_t count) {
    const Cell* falling1 = &c.kept(a1);
    const Cell* rising1 = &c.first(b1);
    const Cell* falling2 = &c.kept(a2);
    const Cell* rising2 = &c.first(b2);
    TwoSums sums = {0, 0};
    for (; count > 0; --count) {
        sums.first = sums.first + static_cast<real>(*falling1--) * *rising1++;
        sums.second = sums.second + static_cast<real>(*falling2--) * *rising2++;
    }
    return sums;
}

/// One sum for each lane from `i` on; `take` gets lane and sum.
template <std::size_t lanes, std::size_t i = 0, class Cell, class Take>
[[gnu::always_inline]] inline void sumEach(const OrderCells<Cell>& c, const ArrayIndex* a, const ArrayIndex* b,
                                           std::size_t count, const Take& take) {
    if constexpr (i + 1 < lanes) {
        const TwoSums sums = sumTwo(c, a[i], b[i], a[i + 1], b[i + 1], count);
        take(i, sums.first);
        take(i + 1, sums.second);
        if constexpr (i + 2 < lanes) sumEach<lanes, i + 2>(c, a, b, count, take);
    } else {
        take(i, sumOne(c, a[i], b[i], count));
    }
}

/// Two sums for each lane; `take` gets lane and both.
template <std::size_t lanes, std::size_t i = 0, class Cell, class Take>
[[gnu::always_inline]] inline void sumPairs(const OrderCells<Cell>& c, const ArrayIndex* at, const Take& take) {
    const TwoSums sums = sumTwo(c, at[i], at[lanes + i], at[2 * lanes + i], at[3 * lanes + i], c.k + 1);
    take(i, sums.first, sums.second);
    if constexpr (i + 1 < lanes) sumPairs<lanes, i + 1>(c, at, take);
}

/// The whole part of a number that is rounded to double first; without a call, for which all lanes would be saved.
inline real truncated(real x) {
    const auto rounded = static_cast<double>(x);
    std::uint64_t bits = 0;
    std::memcpy(&bits, &rounded, sizeof bits);
    const int exponent = static_cast<int>(bits >> 52 & 0x7ff) - 0x3ff;
    // The sign stays, so that a small negative number becomes a negative zero.
    if (exponent < 0)
        bits &= 0x8000000000000000;
    else if (exponent < 52)
        bits &= ~(0xfffffffffffff >> exponent);
    double whole = 0;
    std::memcpy(&whole, &bits, sizeof whole);
    return whole;
}

/// Runs blocks of so many lanes; returns what follows their operands.
template <std::size_t lanes, class Cell>
[[gnu::always_inline]] inline const std::uint32_t* runBlocks(const Lanes::Code* begin, const Lanes::Code* end,
                                                             std::uint32_t blocks, const std::uint32_t* at,
                                                             const OrderCells<Cell>& c) {
    using Code = Lanes::Code;
    // Loops over lanes with a constant number of them become straight code, and every accumulator a register.
    for (; blocks > 0; --blocks) {
        real acc[lanes] = {};
        for (const Code* code = begin; code != end; ++code) {
            switch (*code) {
                case Code::LoadRow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.row[at[i]];
                    at += lanes;
                    break;
                case Code::LoadArray:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.kept(at[i]);
                    at += lanes;
                    break;
                case Code::LoadNow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.now[at[i]];
                    at += lanes;
                    break;
                case Code::LoadFixed:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.fixed[at[i]];
                    at += lanes;
                    break;
                case Code::PlusRow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] + c.row[at[i]];
                    at += lanes;
                    break;
                case Code::PlusArray:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] + c.kept(at[i]);
                    at += lanes;
                    break;
                case Code::PlusNow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] + c.now[at[i]];
                    at += lanes;
                    break;
                case Code::PlusFixed:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] + c.fixed[at[i]];
                    at += lanes;
                    break;
                case Code::MinusRow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] - c.row[at[i]];
                    at += lanes;
                    break;
                case Code::MinusArray:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] - c.kept(at[i]);
                    at += lanes;
                    break;
                case Code::MinusNow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] - c.now[at[i]];
                    at += lanes;
                    break;
                case Code::MinusFixed:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] - c.fixed[at[i]];
                    at += lanes;
                    break;
                case Code::MinusFromRow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.row[at[i]] - acc[i];
                    at += lanes;
                    break;
                case Code::MinusFromArray:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.kept(at[i]) - acc[i];
                    at += lanes;
                    break;
                case Code::MinusFromNow:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.now[at[i]] - acc[i];
                    at += lanes;
                    break;
                case Code::MinusFromFixed:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.fixed[at[i]] - acc[i];
                    at += lanes;
                    break;
                case Code::Negate:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = -acc[i];
                    break;
                case Code::Truncate:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = c.k == 0 ? truncated(acc[i]) : 0;
                    break;
                // One factor is constant: the other products are exact zeros as long as every term is finite. Adding to
                // zero stays: it turns a negative zero into a positive one.
                case Code::Scale:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = 0 + acc[i] * c.constants[at[i]];
                    at += lanes;
                    break;
                case Code::ScaleByDouble:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = 0 + acc[i] * doubleIn(c.constants[at[i]]);
                    at += lanes;
                    break;
                case Code::Ratio:
                    for (std::size_t i = 0; i < lanes; ++i) acc[i] = acc[i] / c.constants[at[i]];
                    at += lanes;
                    break;
                case Code::Product:
                    sumEach<lanes>(c, at, at + lanes, c.k + 1, [&](std::size_t i, real sum) { acc[i] = sum; });
                    at += 2 * lanes;
                    break;
                case Code::PlusProduct:
                    sumEach<lanes>(c, at, at + lanes, c.k + 1, [&](std::size_t i, real sum) { acc[i] = acc[i] + sum; });
                    at += 2 * lanes;
                    break;
                case Code::MinusProduct:
                    sumEach<lanes>(c, at, at + lanes, c.k + 1, [&](std::size_t i, real sum) { acc[i] = acc[i] - sum; });
                    at += 2 * lanes;
                    break;
                case Code::ProductPlusProduct:
                    sumPairs<lanes>(c, at, [&](std::size_t i, real p, real q) { acc[i] = p + q; });
                    at += 4 * lanes;
                    break;
                case Code::ProductMinusProduct:
                    sumPairs<lanes>(c, at, [&](std::size_t i, real p, real q) { acc[i] = p - q; });
                    at += 4 * lanes;
                    break;
                case Code::PlusProductPlusProduct:
                    sumPairs<lanes>(c, at, [&](std::size_t i, real p, real q) { acc[i] = acc[i] + p + q; });
                    at += 4 * lanes;
                    break;
                case Code::PlusProductMinusProduct:
                    sumPairs<lanes>(c, at, [&](std::size_t i, real p, real q) { acc[i] = acc[i] + p - q; });
                    at += 4 * lanes;
                    break;
                case Code::MinusProductPlusProduct:
                    sumPairs<lanes>(c, at, [&](std::size_t i, real p, real q) { acc[i] = acc[i] - p + q; });
                    at += 4 * lanes;
                    break;
                case Code::MinusProductMinusProduct:
                    sumPairs<lanes>(c, at, [&](std::size_t i, real p, real q) { acc[i] = acc[i] - p - q; });
                    at += 4 * lanes;
                    break;
                case Code::Quotient:
                    sumEach<lanes>(c, at + lanes, at, c.k,
                                   [&](std::size_t i, real sum) { acc[i] = (acc[i] - sum) / c.first(at[lanes + i]); });
                    at += 2 * lanes;
                    break;
                case Code::Store:
                    for (std::size_t i = 0; i < lanes; ++i) put(c.now[at[i]], acc[i]);
                    at += lanes;
                    break;
                case Code::Keep:
                    for (std::size_t i = 0; i < lanes; ++i) put(c.kept(at[i]), acc[i]);
                    at += lanes;
                    break;
                case Code::NextRow:
                    for (std::size_t i = 0; i < lanes; ++i) put(c.nextRow[at[i]], acc[i] * c.factor);
                    at += lanes;
                    break;
                case Code::NextArray:
                    for (std::size_t i = 0; i < lanes; ++i) put((&c.kept(at[i]))[1], acc[i] * c.factor);
                    at += lanes;
                    break;
                default:
                    // The compiler leaves out the question whether there is such a code.
                    __builtin_unreachable();
            }
        }
    }
    return at;
}

}  // namespace zirk
