// SPDX-License-Identifier: MIT
// The recurrences by which every value of a system gets its Taylor terms, and the system as a list of such values.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "formula/graph.hpp"

namespace zirk {

/// Number of a value in its system; variables are the first values.
using ValueIndex = std::uint32_t;

/// How term k of a value c follows. Terms are scaled: c_k = c^(k)(t) * s^k / k! with s a power of two near the step.
/// A and B are operands, n a number. Sources of the recurrences: R. E. Moore, Interval Analysis, 1966; A. Jorba, M.
/// Zou, Experimental Mathematics 14 (2005), section 2.
enum class Law : std::uint8_t {
    Constant,      ///< n
    Time,          ///< t, s, 0, ...
    Step,          ///< trunc(A), constant until the run locates its next jump
    Sign,          ///< 1 or -1, the side of zero on which A is, likewise
    Add,           ///< A_k + B_k
    Subtract,      ///< A_k - B_k
    Negate,        ///< -A_k
    AddNumber,     ///< A + n
    FromNumber,    ///< n - A
    Scale,         ///< A_k * n
    Ratio,         ///< A_k / n
    ScaleBy,       ///< A_k * B_0, B being constant over a step
    RatioBy,       ///< A_k / B_0, likewise
    Product,       ///< n * sum over i = 0..k of A_i B_(k-i)
    Quotient,      ///< (n A_k - sum over i = 1..k of B_i c_(k-i)) / B_0
    Reciprocal,    ///< n/B: the same with A = n
    Root,          ///< sqrt A: (A_k - sum over i = 1..k-1 of c_i c_(k-i)) / (2 c_0)
    Power,         ///< A^n: sum over i = 1..k of ((n + 1) i - k) A_i c_(k-i), over k A_0
    ProductRate,   ///< c' = n B A', n = 1 or -1: n/k * sum over i = 1..k of i A_i B_(k-i)
    QuotientRate,  ///< c' = n A'/B: (n A_k - 1/k * sum over i = 1..k-1 of i c_i B_(k-i)) / B_0
    SquareLaw      ///< n A^2 from term 1 on, term 0 in a form that loses no digits
};

/// Term 0 of a SquareLaw.
enum class SquareStart : std::uint8_t {
    OnePlus,       ///< 1 + A^2
    OneMinus,      ///< (1 - A)(1 + A)
    MinusOne,      ///< (A - 1)(A + 1)
    OverCosh,      ///< 1/cosh(B)^2, for A = tanh(B)
    MinusOverSinh  ///< -1/sinh(B)^2, for A = coth(B)
};

struct Value {
    static constexpr ValueIndex none = 0xffffffff;

    Law law = Law::Constant;
    /// For laws of rates: the function whose value is term 0. Exp for exp(B) - 1 and 1 - exp(B), A being exp(B): term 0
    /// keeps its digits near B = 0.
    ExprType function = ExprType::Nothing;
    SquareStart start = SquareStart::OnePlus;
    /// Over a step.
    bool isConstant = false;
    ValueIndex a = none;
    ValueIndex b = none;
    real n = 0;
    /// For acotan: the value that says on which side of its jump A is.
    ValueIndex side = none;
    /// What it stands for, for messages: a node of the graph that the system is made from.
    NodeIndex formula = FormulaGraph::none;
};

/// A system as values: the variables first, then operands before what is made from them (at the same order).
struct ValueSystem {
    ValueIndex variables = 0;
    /// Entries of variables are not used.
    std::vector<Value> values;
    /// Per variable: the value that is its derivative.
    std::vector<ValueIndex> rates;
    /// Values of the formulas that are watched, in their order.
    std::vector<ValueIndex> watched;

    ValueIndex size() const { return static_cast<ValueIndex>(values.size()); }
};

/// Whether the value has a series of its own that may fail to converge: functions, powers, roots and quotients.
inline bool isFunction(const Value& value) {
    switch (value.law) {
        case Law::Quotient:
        case Law::Reciprocal:
        case Law::Root:
        case Law::Power:
        case Law::ProductRate:
        case Law::QuotientRate:
            return true;
        default:
            return false;
    }
}

/// Whether the value jumps between steps.
inline bool isJumping(const Value& value) { return value.law == Law::Step || value.law == Law::Sign; }

/// Term 0 of a value from terms 0 of its operands; not for variables, Time, Step and Sign.
real firstTerm(const Value& value, real a, real b, real side);

/// The operands whose term k is needed for term k of the value; none in unused places.
struct Operands {
    ValueIndex of[3];
};
Operands sameOrderOperands(const Value& value);

}  // namespace zirk
