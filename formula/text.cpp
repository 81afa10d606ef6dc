// SPDX-License-Identifier: MIT
// Infix text by precedence, with a stack of its own.
#include "formula/text.hpp"

#include <cmath>

#include "expr/elementary.hpp"

namespace zirk {

namespace {

enum Level { ofSum = 1, ofProduct = 2, ofSign = 3, ofPower = 4, ofAtom = 5 };

Level levelOf(const FormulaGraph::Node& node) {
    switch (node.operation) {
        case Operation::Add:
        case Operation::Subtract:
            return ofSum;
        case Operation::Multiply:
        case Operation::Divide:
            return ofProduct;
        case Operation::Negate:
            return ofSign;
        case Operation::Power:
            return ofPower;
        case Operation::Number:
            return std::signbit(node.number) ? ofSign : ofAtom;
        default:
            return ofAtom;
    }
}

/// How an operation of two operands is written, and which levels its operands must have at least.
struct Infix {
    const char* symbol;
    Level left;
    Level right;
};

Infix infixOf(Operation operation) {
    switch (operation) {
        case Operation::Add:
            return {" + ", ofSum, ofProduct};
        case Operation::Subtract:
            return {" - ", ofSum, ofProduct};
        case Operation::Multiply:
            return {"*", ofProduct, ofSign};
        case Operation::Divide:
            return {"/", ofProduct, ofSign};
        default:
            return {"^", ofAtom, ofSign};
    }
}

class FormulaWriter {
public:
    FormulaWriter(const FormulaGraph& graph, const FormulaNames& names, std::size_t most)
        : graph_(graph), names_(names), most_(most) {}

    std::string write(const FormulaGraph::Node& root) {
        writeNode(root);
        while (!tasks_.empty() && text_.size() <= most_) {
            const Task task = tasks_.back();
            tasks_.pop_back();
            if (task.words != nullptr) {
                text_ += task.words;
            } else {
                writeOperand(task.node, task.least);
            }
        }
        return text_.size() <= most_ ? text_ : text_.substr(0, most_) + "...";
    }

private:
    /// Words, or an operand with the level that it needs to stand without brackets.
    struct Task {
        const char* words;
        NodeIndex node;
        Level least;
    };

    void later(const char* words) { tasks_.push_back({words, FormulaGraph::none, ofAtom}); }
    void later(NodeIndex node, Level least) { tasks_.push_back({nullptr, node, least}); }

    void writeOperand(NodeIndex index, Level least) {
        const auto named = names_.formulas.find(index);
        if (named != names_.formulas.end()) {
            text_ += named->second;
            return;
        }
        const FormulaGraph::Node& node = graph_[index];
        if (levelOf(node) < least) {
            text_ += '(';
            later(")");
        }
        writeNode(node);
    }

    /// Writes what stands before the first operand and leaves the rest for later, in reverse.
    void writeNode(const FormulaGraph::Node& node) {
        switch (node.operation) {
            case Operation::Number:
                text_ += numberText(node.number);
                return;
            case Operation::Time:
                text_ += 't';
                return;
            case Operation::Variable:
                text_ += names_.variables[node.left];
                return;
            case Operation::Function:
                text_ += functionOf(node.function).written[0];
                text_ += '(';
                later(")");
                return later(node.left, ofSum);
            case Operation::Negate:
                text_ += '-';
                return later(node.left, ofSign);
            default:
                break;
        }
        const Infix infix = infixOf(node.operation);
        later(node.right, infix.right);
        later(infix.symbol);
        later(node.left, infix.left);
    }

    const FormulaGraph& graph_;
    const FormulaNames& names_;
    std::size_t most_;
    std::string text_;
    std::vector<Task> tasks_;
};

}  // namespace

std::string formulaText(const FormulaGraph& graph, NodeIndex root, const FormulaNames& names, std::size_t most) {
    return FormulaWriter(graph, names, most).write(graph[root]);
}

std::string operationText(const FormulaGraph& graph, Operation operation, ExprType function, NodeIndex a, NodeIndex b) {
    return FormulaWriter(graph, {}, std::string::npos).write({operation, function, a, b, 0});
}

}  // namespace zirk
