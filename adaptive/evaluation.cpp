// SPDX-License-Identifier: MIT
// A list of nodes, operands first.
#include "adaptive/evaluation.hpp"

#include <cmath>
#include <unordered_map>

#include "formula/functions.hpp"

namespace zirk {

Evaluation::Evaluation(const FormulaGraph& graph, const std::vector<NodeIndex>& roots) {
    constexpr NodeIndex none = FormulaGraph::none;
    std::unordered_map<NodeIndex, std::uint32_t> placeOf;
    std::vector<NodeIndex> stack;
    for (const NodeIndex root : roots) {
        stack.push_back(root);
        while (!stack.empty()) {
            const NodeIndex at = stack.back();
            FormulaGraph::Node node = graph[at];
            bool ready = placeOf.count(at) == 0;
            if (!ready) {
                stack.pop_back();
                continue;
            }
            if (node.operation != Operation::Variable) {
                for (NodeIndex* operand : {&node.left, &node.right}) {
                    if (*operand == none) continue;
                    const auto known = placeOf.find(*operand);
                    if (known != placeOf.end()) {
                        *operand = known->second;
                        continue;
                    }
                    stack.push_back(*operand);
                    ready = false;
                }
            }
            if (!ready) continue;
            placeOf.emplace(at, static_cast<std::uint32_t>(nodes_.size()));
            nodes_.push_back(node);
            exponentialLessOne_.push_back(lessOne(node));
            stack.pop_back();
        }
        places_.push_back(placeOf.at(root));
    }
    results_.resize(nodes_.size());
}

int Evaluation::lessOne(const FormulaGraph::Node& node) const {
    if (node.operation != Operation::Subtract) return 0;
    const auto isOne = [&](NodeIndex at) {
        return nodes_[at].operation == Operation::Number && nodes_[at].number == 1;
    };
    const auto isExponential = [&](NodeIndex at) {
        return nodes_[at].operation == Operation::Function && nodes_[at].function == ExprType::Exp;
    };
    if (isExponential(node.left) && isOne(node.right)) return 1;
    return isOne(node.left) && isExponential(node.right) ? -1 : 0;
}

void Evaluation::values(real time, const real* variables, real* out) {
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        const FormulaGraph::Node& node = nodes_[i];
        const auto operand = [&](NodeIndex at) { return at == FormulaGraph::none ? real{0} : results_[at]; };
        switch (node.operation) {
            case Operation::Number:
                results_[i] = node.number;
                break;
            case Operation::Time:
                results_[i] = time;
                break;
            case Operation::Variable:
                results_[i] = variables[node.left];
                break;
            case Operation::Function:
                results_[i] = exactValue(node.function, operand(node.left));
                break;
            case Operation::Subtract:
                if (exponentialLessOne_[i] != 0) {
                    const int sign = exponentialLessOne_[i];
                    const NodeIndex exponential = sign > 0 ? node.left : node.right;
                    results_[i] = static_cast<real>(sign) * std::expm1(results_[nodes_[exponential].left]);
                    break;
                }
                [[fallthrough]];
            default:
                results_[i] = applyOperation(node.operation, operand(node.left), operand(node.right));
        }
    }
    for (std::size_t i = 0; i < places_.size(); ++i) out[i] = results_[places_[i]];
}

}  // namespace zirk
