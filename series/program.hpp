// SPDX-License-Identifier: MIT
// What has to be done at one order, as instructions for a machine with one accumulator.
#pragma once

#include <cstddef>
#include <vector>

#include "series/term_graph.hpp"

namespace zirk {

/// Number of a term array: terms 0 to k of one slot, for products and quotients to sum over.
using ArrayIndex = std::uint32_t;

/// Where the terms of a slot stand.
struct Place {
    enum Where : unsigned char {
        /// One in the row of every order: variables.
        Row,
        /// All together in an array: what products and quotients sum over.
        Array,
        /// The present one only.
        Now,
        /// Known before the orders run: leaves, and what is constant over the step.
        Fixed
    };
    Where where;
    std::uint32_t index;
};

/// Instructions that give every value of a graph its term k and every variable its term k + 1.
///
/// An instruction may load the accumulator, then does one operation on it, and may leave its value somewhere. A chain
/// of instructions begins with a load or a product and makes one value; values that one other value needs live in the
/// accumulator only. With s a slot, x, y term arrays and acc the accumulator, operations are:
///     Plus s, Minus s                 acc + s, acc - s
///     MinusFrom s                     s - acc
///     Negate, Truncate                of acc
///     Scale s, Ratio s                0 + acc * s, acc / s, for the constant in s
///     ScaleByDouble s                 as Scale, for a number in s that is a double
///     Product x y                     term k of x * y
///     PlusProduct, MinusProduct x y   acc plus or minus that
///     Quotient x y                    (acc - sum over x and y) / first term of y; x is the quotient itself
struct Program {
    enum class Code : unsigned char {
        Nothing,
        Plus,
        Minus,
        MinusFrom,
        Negate,
        Truncate,
        Scale,
        ScaleByDouble,
        Ratio,
        Product,
        PlusProduct,
        MinusProduct,
        Quotient
    };
    /// What becomes of the accumulator: the present term of a slot, term k of an array, or what term k + 1 of a
    /// variable is made from, kept in an array as well or not.
    enum class Result : unsigned char { Nothing, Store, Keep, Next, NextKept };

    struct Instruction {
        SlotIndex load = TermGraph::none;
        Code code = Code::Nothing;
        Result result = Result::Nothing;
        /// Of the operation: one slot in `a`, or two arrays.
        std::uint32_t a = TermGraph::none;
        ArrayIndex b = TermGraph::none;
        /// What takes the result.
        SlotIndex target = TermGraph::none;
        ArrayIndex array = TermGraph::none;
    };
    /// `owner`: the slot that the chain makes, or the variable that takes it.
    struct Chain {
        SlotIndex owner;
        std::uint32_t length;
    };

    /// The chains whose owners are needed, in the same sections.
    Program needing(const std::vector<char>& needed) const;

    std::vector<Chain> chains;
    /// Those of the chains, one after the other.
    std::vector<Instruction> instructions;

    /// Where it is cut for several threads (series/sections.hpp): parts run at the same time, stages one after the
    /// other. The end of every section in the chains, stage by stage; none where it is not cut.
    unsigned parts = 1;
    std::vector<std::size_t> sectionEnds;
};

/// The programs for a graph.
struct Programs {
    explicit Programs(const TermGraph& graph);

    /// Values that are constant over the step, for orders 0 and 1; the same from then on.
    Program constants;
    Program varying;
    /// Per slot.
    std::vector<Place> places;
    /// How many there are of each.
    std::uint32_t rows = 0;
    ArrayIndex arrays = 0;
    std::uint32_t nows = 0;
    std::uint32_t fixed = 0;
};

}  // namespace zirk
