// SPDX-License-Identifier: MIT
// Statements into variables.
#include "lang/compiler.hpp"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

#include "lang/grammar.hpp"
#include "lang/scanner.hpp"
#include "zirk/error.hpp"

namespace zirk {

namespace {

/// A chain of derivatives longer than this would fill the memory before anybody could use it.
constexpr int maxDerivative = 1000000;

}  // namespace

Compiler::Compiler(Source source, EquationSystem& system) : source_(std::move(source)), system_(system) {}

void Compiler::compile() {
    const Scanner scanner(*this);
    if (yyparse(scanner.handle(), *this) != 0) throw errorHere(messages_);
    if (stepFunctions_.empty()) return;
    messages_ += '\n';
    for (const ParseError& stepFunction : stepFunctions_) messages_ += stepFunction.text();
    const ParseError& last = stepFunctions_.back();
    throw ParseError(messages_, last.line(), last.column(), last.token());
}

std::size_t Compiler::readSource(char* buffer, std::size_t size) const {
    try {
        return source_(buffer, size);
    } catch (const Error& error) {
        // What was said before is not lost.
        throw Error(messages_ + error.text(), error.status());
    }
}

std::size_t Compiler::read(char* buffer, std::size_t size) {
    if (inputEnded_) return 0;
    const std::size_t count = readSource(buffer, size);
    const void* nul = std::memchr(buffer, 0, count);
    inputEnded_ = nul != nullptr || count < size;
    return nul == nullptr ? count : static_cast<std::size_t>(static_cast<const char*>(nul) - buffer);
}

void Compiler::equation(const std::string& name, int order, const Expr::Ref& rightHandSide, real start) {
    if (order == 0) {
        system_.equations.enter(new Algebraic(name, rightHandSide));
        return;
    }
    if (order > maxDerivative) {
        throw Error(messages_ + "#(ERR) Derivative " + std::to_string(order) + " of \"" + name +
                        "\" is beyond the limit of " + std::to_string(maxDerivative) + "\n",
                    1);
    }
    for (int k = 1; k < order; ++k) {
        system_.equations.enter(new Differential(derivativeName(name, k - 1), reference(name, k), k == 1 ? start : 0));
    }
    system_.equations.enter(new Differential(derivativeName(name, order - 1), rightHandSide, order == 1 ? start : 0));
}

void Compiler::initialValue(const std::string& name, int order, real value) {
    system_.initialValues[derivativeName(name, order)] = value;
}

void Compiler::checkStartTime(bool isZero) {
    if (isZero) return;
    system_.hasOtherStartTime = true;
    error("Start condition must be defined for zero, not for other value");
}

Expr::Ref Compiler::reference(const std::string& name, int order) const {
    return new Equation(derivativeName(name, order), system_.equations);
}

void Compiler::trace(const char* word) {
    messages_ += word;
    messages_ += ' ';
}

void Compiler::stepFunction(const char* word) {
    trace(word);
    stepFunctions_.push_back(errorHere(errorLine("Step functions have no meaning")));
}

void Compiler::error(const std::string& message) { messages_ += errorLine(message); }

ParseError Compiler::errorHere(const std::string& text) const {
    return {text, line_, static_cast<int>(std::min<std::int64_t>(column_, INT_MAX)), std::string(token_)};
}

std::string Compiler::errorLine(const std::string& message) const {
    return "#(ERR) ERROR: " + message + " \"" + std::string(token_) + "\" at line #" + std::to_string(line_) + "\n";
}

}  // namespace zirk
