// SPDX-License-Identifier: MIT
// What has to be done at one order, as instructions for a machine with one accumulator.
#pragma once

#include <vector>

#include "series/term_graph.hpp"

namespace zirk {

/// Instructions that give every value of a graph its term k and every variable its term k + 1.
///
/// An instruction may load the accumulator, then does one operation on it, and may leave its value somewhere. A chain
/// of instructions begins with a load or a product and makes one value; values that one other value needs live in the
/// accumulator only. With s a slot or a variable, x, y term arrays and acc the accumulator, operations are:
///     Plus s, Minus s                 acc + s, acc - s
///     MinusFrom s                     s - acc
///     Negate, Truncate                of acc
///     Scale s, Ratio s                0 + acc * s, acc / s, for the constant in s
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
        Ratio,
        Product,
        PlusProduct,
        MinusProduct,
        Quotient
    };
    /// What becomes of the accumulator: the present term of a slot, term k of an array, or what term k + 1 of a
    /// variable is made from, kept in an array as well or not.
    enum class Result : unsigned char { Nothing, Store, Keep, Next, NextKept };

    struct Operand {
        bool ofVariable = false;
        int index = TermGraph::none;
    };
    struct Instruction {
        Operand load;
        Code code = Code::Nothing;
        Result result = Result::Nothing;
        /// Of the operation: one operand, or two arrays.
        Operand a;
        int b = TermGraph::none;
        /// Slot or variable that takes the result, and the array.
        int target = TermGraph::none;
        int array = TermGraph::none;
    };
    /// `owner`: the slot that the chain makes, or the variable that takes it.
    struct Chain {
        int owner;
        int length;
    };

    /// The chains whose owners are needed.
    Program needing(const std::vector<char>& needed) const;

    std::vector<Chain> chains;
    /// Those of the chains, one after the other.
    std::vector<Instruction> instructions;
};

/// The programs for a graph in which slot i stands for all j with first[j] = i.
struct Programs {
    struct Variable {
        int slot;
        /// Term array, or none.
        int array;
    };

    Programs(const TermGraph& graph, const std::vector<int>& first);

    /// Values that are constant over the step: run at orders 0 and 1, the same from then on.
    Program constants;
    Program varying;
    std::vector<Variable> variables;
    int arrays = 0;
};

}  // namespace zirk
