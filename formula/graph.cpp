// SPDX-License-Identifier: MIT
// Nodes are found by what they are; simplification looks at one node at a time.
#include "formula/graph.hpp"

#include <cstring>
#include <utility>

#include "formula/functions.hpp"
#include "text/extended_bits.hpp"

namespace zirk {

bool FormulaGraph::Key::operator==(const Key& other) const {
    return std::memcmp(words, other.words, sizeof words) == 0;
}

std::size_t FormulaGraph::KeyHash::operator()(const Key& key) const {
    std::uint64_t hash = 0;
    for (const std::uint64_t word : key.words) {
        hash = (hash ^ word) * 0x9e3779b97f4a7c15U;
        hash ^= hash >> 29;
    }
    return hash;
}

NodeIndex FormulaGraph::enter(const Node& node) {
    const ExtendedBits bits = bitsOf(node.number);
    const Key key{{static_cast<std::uint64_t>(node.operation) << 32 | static_cast<std::uint64_t>(node.function),
                   static_cast<std::uint64_t>(node.left) << 32 | node.right, bits.mantissa, bits.signAndExponent}};
    const auto [place, isNew] = known_.emplace(key, size());
    if (isNew) nodes_.push_back(node);
    return place->second;
}

NodeIndex FormulaGraph::number(real value) { return enter({Operation::Number, ExprType::Nothing, none, none, value}); }

NodeIndex FormulaGraph::time() { return enter({Operation::Time, ExprType::Nothing, none, none, 0}); }

NodeIndex FormulaGraph::variable(std::uint32_t index) {
    return enter({Operation::Variable, ExprType::Nothing, index, none, 0});
}

NodeIndex FormulaGraph::fold(Operation operation, NodeIndex a, NodeIndex b) {
    return number(applyOperation(operation, nodes_[a].number, nodes_[b].number));
}

NodeIndex FormulaGraph::add(NodeIndex a, NodeIndex b) {
    if (areNumbers(a, b)) return fold(Operation::Add, a, b);
    if (isNumber(a, 0)) return b;
    if (isNumber(b, 0)) return a;
    if (b < a) std::swap(a, b);
    return enter({Operation::Add, ExprType::Nothing, a, b, 0});
}

NodeIndex FormulaGraph::subtract(NodeIndex a, NodeIndex b) {
    if (areNumbers(a, b)) return fold(Operation::Subtract, a, b);
    if (isNumber(a, 0)) return negate(b);
    if (isNumber(b, 0)) return a;
    return enter({Operation::Subtract, ExprType::Nothing, a, b, 0});
}

NodeIndex FormulaGraph::multiply(NodeIndex a, NodeIndex b) {
    if (areNumbers(a, b)) return fold(Operation::Multiply, a, b);
    if (isNumber(a, 0) || isNumber(b, 1)) return a;
    if (isNumber(b, 0) || isNumber(a, 1)) return b;
    if (b < a) std::swap(a, b);
    return enter({Operation::Multiply, ExprType::Nothing, a, b, 0});
}

NodeIndex FormulaGraph::divide(NodeIndex a, NodeIndex b) {
    if (areNumbers(a, b)) return fold(Operation::Divide, a, b);
    if (isNumber(b, 1)) return a;
    if (isNumber(a, 0) && !isNumber(b, 0)) return a;
    return enter({Operation::Divide, ExprType::Nothing, a, b, 0});
}

NodeIndex FormulaGraph::negate(NodeIndex a) {
    if (isNumber(a)) return number(-nodes_[a].number);
    if (nodes_[a].operation == Operation::Negate) return nodes_[a].left;
    return enter({Operation::Negate, ExprType::Nothing, a, none, 0});
}

NodeIndex FormulaGraph::power(NodeIndex base, NodeIndex exponent) {
    if (areNumbers(base, exponent)) return fold(Operation::Power, base, exponent);
    if (isNumber(exponent, 0)) return number(1);
    if (isNumber(exponent, 1)) return base;
    return enter({Operation::Power, ExprType::Nothing, base, exponent, 0});
}

NodeIndex FormulaGraph::apply(ExprType function, NodeIndex operand) {
    if (isNumber(operand)) return number(exactValue(function, nodes_[operand].number));
    return enter({Operation::Function, function, operand, none, 0});
}

NodeIndex FormulaGraph::like(const Node& node, NodeIndex left, NodeIndex right) {
    switch (node.operation) {
        case Operation::Number:
            return number(node.number);
        case Operation::Time:
            return time();
        case Operation::Variable:
            return variable(left);
        case Operation::Add:
            return add(left, right);
        case Operation::Subtract:
            return subtract(left, right);
        case Operation::Multiply:
            return multiply(left, right);
        case Operation::Divide:
            return divide(left, right);
        case Operation::Negate:
            return negate(left);
        case Operation::Power:
            return power(left, right);
        case Operation::Function:
            break;
    }
    return apply(node.function, left);
}

NodeIndex FormulaImport::operator()(NodeIndex root) {
    constexpr NodeIndex none = FormulaGraph::none;
    std::vector<NodeIndex> stack{root};
    while (!stack.empty()) {
        const NodeIndex at = stack.back();
        const FormulaGraph::Node& node = from_[at];
        if (copied_.count(at) != 0) {
            stack.pop_back();
            continue;
        }
        NodeIndex operands[2] = {node.left, node.right};
        bool ready = true;
        if (node.operation != Operation::Variable) {
            for (NodeIndex& operand : operands) {
                if (operand == none) continue;
                const auto known = copied_.find(operand);
                if (known == copied_.end()) {
                    stack.push_back(operand);
                    ready = false;
                } else {
                    operand = known->second;
                }
            }
        }
        if (!ready) continue;
        copied_.emplace(at, to_.like(node, operands[0], operands[1]));
        stack.pop_back();
    }
    return copied_.at(root);
}

}  // namespace zirk
