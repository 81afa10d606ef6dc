// SPDX-License-Identifier: MIT
// What the grammar actions call: turns statements into variables and start values.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "zirk/error.hpp"

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
    /// Puts up to `size` characters into `buffer` and returns how many; fewer than `size` are the last.
    using Source = std::function<std::size_t(char* buffer, std::size_t size)>;

    Compiler(Source source, EquationSystem& system);

    /// Error, of type ParseError and with all messages in its text, for a syntax error, for a construct without a
    /// meaning and for what is nested too deeply.
    void compile();

    /// Lines about what was accepted nonetheless.
    const std::string& messages() const { return messages_; }

    // For the scanner.

    /// Reads up to `size` characters; a NUL byte ends the input.
    std::size_t read(char* buffer, std::size_t size);
    /// The text stays where it is until the next token is asked for; so long errors can show it.
    void token(const char* text, std::size_t length) {
        token_ = {text, length};
        column_ = nextColumn_;
        nextColumn_ += static_cast<std::int64_t>(length);
    }
    void newline() {
        ++line_;
        nextColumn_ = 1;
    }

    // For the grammar.

    /// y^(n) = expression & start: a chain of n first-order variables, or an algebraic variable for n = 0.
    void equation(const std::string& name, int order, const Expr::Ref& rightHandSide, real start);
    void initialValue(const std::string& name, int order, real value);
    void checkStartTime(bool isZero);
    Expr::Ref reference(const std::string& name, int order) const;

    /// A trace word of the step-function syntax, which has no meaning of its own.
    void trace(const char* word);
    void stepFunction(const char* word);

    /// Adds one error line with the current token and line; the compilation goes on.
    void error(const std::string& message);

private:
    std::size_t readSource(char* buffer, std::size_t size) const;
    /// An error at the present token.
    ParseError errorHere(const std::string& text) const;
    std::string errorLine(const std::string& message) const;

    Source source_;
    EquationSystem& system_;
    std::string messages_;
    std::string_view token_;
    int line_ = 1;
    /// Of the token, and of what follows it; in bytes, from 1.
    std::int64_t column_ = 1;
    std::int64_t nextColumn_ = 1;
    bool inputEnded_ = false;
    std::vector<ParseError> stepFunctions_;
};

}  // namespace zirk
