// SPDX-License-Identifier: MIT
// Statements into variables.
#include "lang/compiler.hpp"

#include <cstring>
#include <ostream>

#include "expr/failure.hpp"
#include "lang/grammar.hpp"
#include "lang/scanner.hpp"

namespace zirk {

namespace {

/// A chain of derivatives longer than this would fill the memory before anybody could use it.
constexpr int maxDerivative = 1000000;

}  // namespace

Compiler::Compiler(std::istream& input, std::ostream& errors, const Calculus& calculus, const Selection& selection,
                   EquationSystem& system)
    : input_(input), errors_(errors), calculus_(calculus), selection_(selection), system_(system) {}

int Compiler::compile() {
    const Scanner scanner(*this);
    const int result = yyparse(scanner.handle(), *this);
    if (result != 0 || stepFunctions_.empty()) return result;
    errors_ << '\n';
    for (const std::string& line : stepFunctions_) errors_ << line;
    return 1;
}

std::size_t Compiler::read(char* buffer, std::size_t size) {
    if (inputEnded_) return 0;
    input_.read(buffer, static_cast<std::streamsize>(size));
    if (input_.bad()) throw Failure("input in flex scanner failed\n", 2);
    const auto count = static_cast<std::size_t>(input_.gcount());
    const void* nul = std::memchr(buffer, 0, count);
    inputEnded_ = nul != nullptr || count < size;
    return nul == nullptr ? count : static_cast<std::size_t>(static_cast<const char*>(nul) - buffer);
}

void Compiler::enter(Differential* variable) {
    variable->select(selection_.selects(variable->name()));
    system_.equations.enter(variable);
}

void Compiler::equation(const std::string& name, int order, const Expr::Ref& rightHandSide, real start) {
    if (order == 0) {
        enter(new Algebraic(name, rightHandSide));
        return;
    }
    if (order > maxDerivative) {
        throw Failure("#(ERR) Derivative " + std::to_string(order) + " of \"" + name + "\" is beyond the limit of " +
                          std::to_string(maxDerivative) + "\n",
                      1);
    }
    for (int k = 1; k < order; ++k) {
        enter(new Differential(derivativeName(name, k - 1), reference(name, k), k == 1 ? start : calculus_.zero));
    }
    enter(new Differential(derivativeName(name, order - 1), rightHandSide, order == 1 ? start : calculus_.zero));
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

Expr::Ref Compiler::time() const { return new Time; }

Expr::Ref Compiler::constant(real value) const { return new Number(value); }

void Compiler::trace(const char* word) { errors_ << word << ' '; }

void Compiler::stepFunction(const char* word) {
    trace(word);
    stepFunctions_.push_back(errorLine("Step functions have no meaning"));
}

void Compiler::error(const std::string& message) { errors_ << errorLine(message); }

std::string Compiler::errorLine(const std::string& message) const {
    return "#(ERR) ERROR: " + message + " \"" + token_ + "\" at line #" + std::to_string(line_) + "\n";
}

}  // namespace zirk
