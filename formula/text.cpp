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
            perform(task);
        }
        return text_.size() <= most_ ? text_ : text_.substr(0, most_) + "...";
    }

private:
    /// Words, an operand with the level that it needs to stand without brackets, or a number without its sign.
    struct Task {
        enum class Kind { Words, Operand, Magnitude };
        Kind kind;
        const char* words;
        NodeIndex node;
        Level least;
    };

    void later(const char* words) { tasks_.push_back({Task::Kind::Words, words, FormulaGraph::none, ofAtom}); }
    void later(NodeIndex node, Level least) { tasks_.push_back({Task::Kind::Operand, nullptr, node, least}); }

    void perform(const Task& task) {
        switch (task.kind) {
            case Task::Kind::Words:
                text_ += task.words;
                return;
            case Task::Kind::Operand:
                return writeOperand(task.node, task.least);
            case Task::Kind::Magnitude:
                text_ += numberText(-graph_[task.node].number);
        }
    }

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
        const bool isExchanged = isBetterExchanged(node);
        const NodeIndex left = isExchanged ? node.right : node.left;
        const NodeIndex right = isExchanged ? node.left : node.right;
        if (node.operation == Operation::Add && graph_.isNumber(right) && graph_[right].number < 0) {
            // x + (-2) has the bits of x - 2.
            tasks_.push_back({Task::Kind::Magnitude, nullptr, right, ofAtom});
            later(" - ");
        } else {
            later(right, infix.right);
            later(infix.symbol);
        }
        later(left, infix.left);
    }

    Level levelAt(NodeIndex index) const { return names_.formulas.count(index) != 0 ? ofAtom : levelOf(graph_[index]); }

    /// The operands of a sum or product stand in the order of the graph. They read better without brackets, and with
    /// numbers at the end of a sum and at the front of a product; the value is the same.
    bool isBetterExchanged(const FormulaGraph::Node& node) const {
        if (node.operation != Operation::Add && node.operation != Operation::Multiply) return false;
        const Level own = levelOf(node);
        const bool leftIsLike = levelAt(node.left) == own;
        if (!leftIsLike && levelAt(node.right) == own) return true;
        const bool isSum = node.operation == Operation::Add;
        const NodeIndex number = isSum ? node.left : node.right;
        const NodeIndex other = isSum ? node.right : node.left;
        return graph_.isNumber(number) && !graph_.isNumber(other) && (isSum || !leftIsLike);
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
