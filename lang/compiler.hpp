// SPDX-License-Identifier: MIT
// What the grammar actions call: turns statements into variables and start values.
#pragma once

#include <iosfwd>
#include <istream>
#include <string>
#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"

namespace zirk {

/// Value of a grammar symbol; each symbol uses the fields that it needs.
struct Semantic {
    int integer = 0;
    real number = 0;
    std::string name;
    Expr::Ref expression;
};

/// Compiles one input text into an EquationSystem.
class Compiler {
public:
    Compiler(std::istream& input, std::ostream& errors, const Calculus& calculus, const Selection& selection,
             EquationSystem& system);

    /// 0: every statement was accepted; 1: a syntax error or a construct without a meaning; 2: nested too deeply.
    int compile();

    // For the scanner.

    /// Reads up to `size` characters; a NUL byte ends the input. Failure of status 2 when the input cannot be read.
    std::size_t read(char* buffer, std::size_t size);
    void token(const char* text, std::size_t length) { token_.assign(text, length); }
    void newline() { ++line_; }

    // For the grammar.

    /// y^(n) = expression & start: a chain of n first-order variables, or an algebraic variable for n = 0.
    void equation(const std::string& name, int order, const Expr::Ref& rightHandSide, real start);
    void initialValue(const std::string& name, int order, real value);
    void checkStartTime(bool isZero);
    Expr::Ref reference(const std::string& name, int order) const;
    Expr::Ref time() const;
    Expr::Ref constant(real value) const;
    real zero() const { return calculus_.zero; }
    real pi() const { return calculus_.pi; }

    /// A trace word of the step-function syntax, which has no meaning of its own.
    void trace(const char* word);
    void stepFunction(const char* word);

    /// Writes one error line with the current token and line; the run goes on.
    void error(const std::string& message);

private:
    void enter(Differential* variable);
    std::string errorLine(const std::string& message) const;

    std::istream& input_;
    std::ostream& errors_;
    const Calculus& calculus_;
    const Selection& selection_;
    EquationSystem& system_;
    std::string token_;
    int line_ = 1;
    bool inputEnded_ = false;
    std::vector<std::string> stepFunctions_;
};

}  // namespace zirk
