// SPDX-License-Identifier: MIT
// Every term straight from its law, over terms kept value by value: the definition that the fast loops have to meet.
#include "adaptive/terms.hpp"

namespace zirk {

namespace {

/// The sum over i from 1 to k - 1 of f(i), in the order that belongs to the kind of number.
template <class Product>
real orderedSum(int k, const Product& product, real) {
    real sum = 0;
    for (int i = 1; i < k; ++i) sum += product(i);
    return sum;
}

template <class Product>
double orderedSum(int k, const Product& product, double) {
    const int count = k - 1;
    double part[4] = {0, 0, 0, 0};
    int i = 1;
    while (i + 3 <= count) {
        for (double& sum : part) sum += product(i++);
    }
    double even = part[0] + part[2];
    double odd = part[1] + part[3];
    if (count % 4 >= 2) {
        even += product(i++);
        odd += product(i++);
    }
    const double sum = even + odd;
    return count % 2 == 1 ? sum + product(i) : sum;
}

}  // namespace

template <class T>
T Terms<T>::lawfulTerm(ValueIndex c, int k) const {
    const Value& value = system_.values[c];
    if (value.isConstant) return 0;
    const ValueIndex a = value.a;
    const ValueIndex b = value.b;
    const T n = numbers_[c];
    const auto term = [this](ValueIndex i, int j) { return history_[i][static_cast<std::size_t>(j)]; };
    const auto over = [&](T x, ValueIndex i) { return overFirst(x, i, first_.data(), reciprocal_.data()); };
    const auto byOrder = [&](T x) { return overOrder(x, k, ofOrder_.data()); };
    const auto inner = [&](ValueIndex x, ValueIndex y) {
        return orderedSum(
            k, [&](int i) { return term(x, i) * term(y, k - i); }, T{});
    };
    const auto innerWeighted = [&](ValueIndex x, ValueIndex y) {
        const std::vector<T>& weighted = weightedHistory_[x];
        return orderedSum(
            k, [&](int i) { return weighted[static_cast<std::size_t>(i)] * term(y, k - i); }, T{});
    };
    switch (value.law) {
        case Law::Time:
            return k == 1 ? scale_ : T{0};
        case Law::Add:
            return term(a, k) + term(b, k);
        case Law::Subtract:
            return term(a, k) - term(b, k);
        case Law::Negate:
        case Law::FromNumber:
            return -term(a, k);
        case Law::AddNumber:
            return term(a, k);
        case Law::Scale:
            return term(a, k) * n;
        case Law::Ratio:
            return term(a, k) / n;
        case Law::ScaleBy:
            return term(a, k) * term(b, 0);
        case Law::RatioBy:
            return over(term(a, k), b);
        case Law::Product:
            return n * (inner(a, b) + (term(a, 0) * term(b, k) + term(a, k) * term(b, 0)));
        case Law::SquareLaw:
            return n * (inner(a, a) + 2 * (term(a, 0) * term(a, k)));
        case Law::Quotient:
            return over(n * term(a, k) - (inner(b, c) + term(b, k) * term(c, 0)), b);
        case Law::Reciprocal:
            return -over(inner(b, c) + term(b, k) * term(c, 0), b);
        case Law::Root:
            return over((term(a, k) - inner(c, c)) / 2, c);
        case Law::Power: {
            const T newest = term(a, k) * term(c, 0);
            const T heavy = (innerWeighted(a, c) + static_cast<T>(k) * newest) * (n + 1);
            return over(byOrder(heavy) - (inner(a, c) + newest), a);
        }
        case Law::ProductRate:
            return n * (byOrder(innerWeighted(a, b)) + term(a, k) * term(b, 0));
        case Law::QuotientRate:
            return over(n * term(a, k) - byOrder(innerWeighted(c, b)), b);
        default:
            return 0;
    }
}

template <class T>
void Terms<T>::remember(ValueIndex value, int k, T term) {
    history_[value][static_cast<std::size_t>(k)] = term;
    weightedHistory_[value][static_cast<std::size_t>(k)] = static_cast<T>(k) * term;
}

template <class T>
void Terms<T>::runPlainly(int first, int last) {
    T* const cells = cells_.data();
    for (int k = first; k <= last; ++k) {
        for (ValueIndex i = system_.variables; i < system_.size(); ++i) {
            now_[i] = lawfulTerm(i, k);
            remember(i, k, now_[i]);
            const Arrangement::Instruction& to = arrangement_.instructions[i];
            cells[to.rising + static_cast<std::size_t>(k)] = now_[i];
        }
        if (k < arrangement_.order) advancePlainly(k);
    }
}

template <class T>
void Terms<T>::advancePlainly(int k) {
    advanceVariables(tables(), k);
    for (ValueIndex i = 0; i < system_.variables; ++i) remember(i, k + 1, now_[i]);
}

template real Terms<real>::lawfulTerm(ValueIndex, int) const;
template double Terms<double>::lawfulTerm(ValueIndex, int) const;
template void Terms<real>::remember(ValueIndex, int, real);
template void Terms<double>::remember(ValueIndex, int, double);
template void Terms<real>::runPlainly(int, int);
template void Terms<double>::runPlainly(int, int);
template void Terms<real>::advancePlainly(int);
template void Terms<double>::advancePlainly(int);

}  // namespace zirk
