// SPDX-License-Identifier: MIT
// What has to be done at one order, as instructions for a machine with one accumulator.
#pragma once

#include <vector>

#include "solver/term_graph.hpp"

/// Instructions that give every value of a graph its term k and every variable its term k + 1.
///
/// A chain begins with a load and ends with what becomes of the accumulator. Values that one other value needs live in
/// the accumulator only. With s a slot, x, y term arrays, v a variable and acc the accumulator:
///     Load s, Plus s, Minus s         acc = s, acc + s, acc - s
///     MinusFrom s                     acc = s - acc
///     Negate, Truncate                of acc
///     Scale s, Ratio s                acc = 0 + acc * s, acc / s, for the constant in s
///     LoadProduct x y                 acc = term k of x * y
///     PlusProduct, MinusProduct x y   the same added to or subtracted from acc
///     Quotient x y                    acc = (acc - sum over x and y) / first term of y; x is the quotient itself
///     Store s, Keep x                 acc into s, acc as term k into x
///     Next v x                        term k + 1 of variable v from acc, and into x unless x is none
///
/// Operands of Load to MinusFrom are slots or, with `ofVariable`, variables.
struct Program {
    enum class Code : unsigned char {
        Load,
        Plus,
        Minus,
        MinusFrom,
        Negate,
        Truncate,
        Scale,
        Ratio,
        LoadProduct,
        PlusProduct,
        MinusProduct,
        Quotient,
        Store,
        Keep,
        Next
    };

    struct Instruction {
        Code code;
        bool ofVariable;
        int a;
        int b;
    };
    /// `owner`: the slot that the chain makes, or the variable that takes it.
    struct Chain {
        int owner;
        int length;
    };

    /// The chains whose owners are needed.
    Program needing(const std::vector<char>& needed) const;

    std::vector<Chain> chains;
    std::vector<Instruction> instructions;
};

/// The programs for a graph in which slot i stands for all j with first[j] = i.
struct Programs {
    struct Variable {
        int slot;
        int source;
        /// Term array, or none.
        int array;
    };

    Programs(const TermGraph& graph, const std::vector<int>& first);

    /// Values that are constant over the step: run at orders 0 and 1, the same from then on.
    Program constants;
    Program varying;
    std::vector<Variable> variables;
    int arrays = 0;
    /// Constants that are computed. As factors they have only zero terms while they are finite.
    std::vector<int> computedConstants;
};
