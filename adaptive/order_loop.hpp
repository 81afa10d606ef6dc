// SPDX-License-Identifier: MIT
// The loop over orders: group after group of values that follow the same law.
#pragma once

#include "adaptive/sections.hpp"

namespace zirk {

/// What the loop works on: arrays that belong to a Terms. T is real or double.
template <class T>
struct OrderTables {
    const Arrangement* arrangement;
    /// Per variable: the value that is its derivative.
    const ValueIndex* rates;
    ValueIndex variables;
    /// Per value: its term of the present order, its term 0, 1 over that (of divisors, for doubles), its number n.
    T* now;
    const T* first;
    const T* reciprocals;
    const T* numbers;
    /// Cells of all arrays.
    T* cells;
    /// Term k of variable i at [k * rowLength + i].
    T* rows;
    /// 1/k at [k].
    const T* ofOrder;
    T scale;
};

/// Terms `first` to `last` of all values; behind each, the next term of the variables if there is one.
void runOrders(const OrderTables<real>& tables, int first, int last);
void runOrders(const OrderTables<double>& tables, int first, int last);

/// The same for doubles on processors without AVX, to the same bits.
void runOrdersWithoutAvx(const OrderTables<double>& tables, int first, int last);

/// The same by the members of a crew, section by section.
void runOrders(const OrderTables<real>& tables, int first, int last, const Sections& sections, Crew& crew);
void runOrders(const OrderTables<double>& tables, int first, int last, const Sections& sections, Crew& crew);

/// A term over term 0 of a value, and over an order. Doubles multiply by a reciprocal: what that rounds is far below
/// what their terms are needed for.
inline real overFirst(real x, ValueIndex value, const real* first, const real*) { return x / first[value]; }
inline double overFirst(double x, ValueIndex value, const double*, const double* reciprocals) {
    return x * reciprocals[value];
}
inline real overOrder(real x, int k, const real*) { return x / static_cast<real>(k); }
inline double overOrder(double x, int k, const double* ofOrder) { return x * ofOrder[k]; }

/// Term k + 1 of the variables of one part. Others may still need terms k of these: they have them from
/// their row, and nobody reads them anywhere else.
template <class T>
void advanceVariables(const OrderTables<T>& tables, int k, const Sections::Share& share) {
    const auto n = static_cast<std::size_t>(k) + 1;
    const T scale = tables.scale;
    T* const next = tables.rows + n * tables.arrangement->rowLength;
    const T* const row = next - tables.arrangement->rowLength;
    // Behind terms 0 nobody has copied them to where terms of the present order are.
    const T* const now = k == 0 ? tables.first : tables.now;
    for (const Sections::Range& range : share.variables) {
        for (ValueIndex i = range.begin; i < range.end; ++i) {
            const ValueIndex rate = tables.rates[i];
            const T term = (rate < tables.variables ? row : now)[rate];
            next[i] = overOrder(term * scale, k + 1, tables.ofOrder);
        }
    }
    T* const rising = tables.cells + n;
    T* const falling = tables.cells - n;
    const auto order = static_cast<T>(k + 1);
    for (const Arrangement::Instruction& to : share.keptVariables) {
        const T term = next[to.value];
        rising[to.rising] = term;
        falling[to.falling] = term;
        rising[to.weighted] = order * term;
    }
}

/// Term k + 1 of the variables from term k of their rates. Real numbers are divided by k + 1: its reciprocal would be
/// off by the same share in every step, and the energy of an orbit drift in proportion to time.
template <class T>
inline void advanceVariables(const OrderTables<T>& tables, int k) {
    const auto n = static_cast<std::size_t>(k) + 1;
    // The scale is a power of two: nothing is rounded by it.
    const T scale = tables.scale;
    T* const next = tables.rows + n * tables.arrangement->rowLength;
    T* const now = tables.now;
    for (ValueIndex i = 0; i < tables.variables; ++i)
        next[i] = overOrder(now[tables.rates[i]] * scale, k + 1, tables.ofOrder);
    for (ValueIndex i = 0; i < tables.variables; ++i) now[i] = next[i];
    T* const rising = tables.cells + n;
    T* const falling = tables.cells - n;
    const auto order = static_cast<T>(k + 1);
    for (const Arrangement::Instruction& to : tables.arrangement->keptVariables) {
        const T term = now[to.value];
        rising[to.rising] = term;
        falling[to.falling] = term;
        rising[to.weighted] = order * term;
    }
}

}  // namespace zirk
