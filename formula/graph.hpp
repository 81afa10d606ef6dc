// SPDX-License-Identifier: MIT
// Formulas as mathematics: a graph in which equal formulas are one node.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "expr/expr.hpp"

namespace zirk {

/// Number of a node in its graph. Operands have smaller numbers than what is made from them.
using NodeIndex = std::uint32_t;

/// What a node is. Power raises to an exponent of any kind; Function is one of the elementary functions.
enum class Operation : std::uint8_t {
    Number,
    Time,
    Variable,
    Add,
    Subtract,
    Multiply,
    Divide,
    Negate,
    Power,
    Function
};

/// Formulas over time and the variables of a system, made from the bottom up.
///
/// Formulas that are written alike are one node, so what they share is computed once. Constants are folded with all 64
/// bits; of the rest only an exact 0 or 1 simplifies: x + 0, x - 0, 0 - x, 0*x, 1*x, 0/x, x/1, x^0, x^1, -(-x).
class FormulaGraph {
public:
    struct Node {
        Operation operation;
        /// Kind of a Function; Nothing for all others.
        ExprType function;
        /// Operands, or none; for a Variable `left` is its number.
        NodeIndex left;
        NodeIndex right;
        /// Of a Number.
        real number;
    };
    static constexpr NodeIndex none = 0xffffffff;

    NodeIndex number(real value);
    NodeIndex time();
    NodeIndex variable(std::uint32_t index);
    NodeIndex add(NodeIndex a, NodeIndex b);
    NodeIndex subtract(NodeIndex a, NodeIndex b);
    NodeIndex multiply(NodeIndex a, NodeIndex b);
    NodeIndex divide(NodeIndex a, NodeIndex b);
    NodeIndex negate(NodeIndex a);
    NodeIndex power(NodeIndex base, NodeIndex exponent);
    NodeIndex apply(ExprType function, NodeIndex operand);

    /// A node like one of another graph, with operands of this one (for a Variable: the given left).
    NodeIndex like(const Node& node, NodeIndex left, NodeIndex right);

    const Node& operator[](NodeIndex node) const { return nodes_[node]; }
    NodeIndex size() const { return static_cast<NodeIndex>(nodes_.size()); }
    bool isNumber(NodeIndex node) const { return nodes_[node].operation == Operation::Number; }
    bool isNumber(NodeIndex node, real value) const { return isNumber(node) && nodes_[node].number == value; }

private:
    struct Key {
        std::uint64_t words[4];
        bool operator==(const Key& other) const;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    NodeIndex enter(const Node& node);
    NodeIndex fold(Operation operation, NodeIndex a, NodeIndex b);
    bool areNumbers(NodeIndex a, NodeIndex b) const { return isNumber(a) && isNumber(b); }

    std::vector<Node> nodes_;
    std::unordered_map<Key, NodeIndex, KeyHash> known_;
};

/// Formulas of one graph copied into another, with all that they are made from; equal ones are found again there.
class FormulaImport {
public:
    FormulaImport(const FormulaGraph& from, FormulaGraph& to) : from_(from), to_(to) {}

    NodeIndex operator()(NodeIndex root);

private:
    const FormulaGraph& from_;
    FormulaGraph& to_;
    std::unordered_map<NodeIndex, NodeIndex> copied_;
};

}  // namespace zirk
