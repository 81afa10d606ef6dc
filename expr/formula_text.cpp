// SPDX-License-Identifier: MIT
// Infix text by precedence. The depth is bounded, so plain recursion does.
#include "expr/formula_text.hpp"

#include <algorithm>
#include <sstream>

#include "expr/arithmetic.hpp"
#include "expr/elementary.hpp"

namespace zirk {

namespace {

constexpr std::size_t longest = 60;
constexpr int deepest = 40;

enum Precedence { ofSum = 1, ofProduct = 2, ofSign = 3, ofAtom = 4 };

Precedence precedenceOf(const Expr& node) {
    switch (node.type()) {
        case ExprType::Plus:
        case ExprType::Minus:
            return ofSum;
        case ExprType::Multiply:
        case ExprType::Divide:
            return ofProduct;
        case ExprType::UnMinus:
            return ofSign;
        case ExprType::Number:
            return node.startValue() < 0 ? ofSign : ofAtom;
        default:
            return ofAtom;
    }
}

class Writer {
public:
    std::string text() const { return text_.size() <= longest ? text_ : text_.substr(0, longest) + "..."; }

    void write(const Expr& node, int depth = 0) {
        if (depth > deepest) {
            text_ += "...";
            return;
        }
        if (text_.size() > longest) return;
        if (const Differential* variable = asVariable(&node)) return writeVariable(*variable, depth);
        switch (node.type()) {
            case ExprType::Plus:
                return writeBinary(node, " + ", depth);
            case ExprType::Minus:
                return writeBinary(node, " - ", depth);
            case ExprType::Multiply:
                return writeBinary(node, "*", depth);
            case ExprType::Divide:
                return writeBinary(node, "/", depth);
            case ExprType::UnMinus:
                text_ += '-';
                return writeOperand(*node.operand(0), ofAtom, depth);
            case ExprType::Nothing:
            case ExprType::Number:
            case ExprType::Time:
            case ExprType::Equation:
                return writeLeaf(node);
            default:
                text_ += functionName(node.type());
                text_ += '(';
                write(*node.operand(0), depth + 1);
                text_ += ')';
        }
    }

private:
    void writeOperand(const Expr& node, int least, int depth, bool behindOperator = false) {
        const bool brackets = precedenceOf(node) < least || (behindOperator && precedenceOf(node) == ofSign);
        if (brackets) text_ += '(';
        write(node, depth + 1);
        if (brackets) text_ += ')';
    }

    void writeBinary(const Expr& node, const char* symbol, int depth) {
        const int own = precedenceOf(node);
        writeOperand(*node.operand(0), own, depth);
        text_ += symbol;
        writeOperand(*node.operand(1), own + 1, depth, true);
    }

    void writeVariable(const Differential& variable, int depth) {
        if (variable.origin()->type() != ExprType::Nothing) return write(*variable.origin(), depth + 1);
        text_ += writtenName(variable.name());
    }

    void writeLeaf(const Expr& node) {
        std::ostringstream out;
        node.Print(out);
        text_ += out.str();
    }

    std::string text_;
};

}  // namespace

std::string formulaText(const Expr& formula) {
    Writer writer;
    writer.write(formula);
    return writer.text();
}

std::string writtenName(const std::string& name) {
    const std::size_t percent = name.find('%', 1);
    if (percent == std::string::npos) return name;
    const std::string order = name.substr(percent + 1);
    const bool isShort = order.size() == 1 && order[0] <= '3';
    return name.substr(0, percent) +
           (isShort ? std::string(static_cast<std::size_t>(order[0] - '0'), '\'') : "'" + order);
}

std::string describe(const Differential& variable) {
    if (variable.origin()->type() == ExprType::Nothing) return "variable \"" + variable.name() + '"';
    return "function " + formulaText(*variable.origin());
}

}  // namespace zirk
