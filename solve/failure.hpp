// SPDX-License-Identifier: MIT
// What ends the command early, besides the errors of the library.
#pragma once

#include <stdexcept>
#include <string>

#include "zirk/error.hpp"

namespace zirk::solve {

/// Exit statuses of the command.
enum Status : int { Success = 0, RunFailed = 1, Unusable = 2, NotCompiled = 3 };

/// Told in one line; what() is the message.
class Failure : public std::runtime_error {
public:
    Failure(const std::string& message, Status status) : std::runtime_error(message), status_(status) {}

    Status status() const { return status_; }

private:
    Status status_;
};

/// The options make no sense; the message is followed by a pointer to --help.
class UsageError : public Failure {
public:
    explicit UsageError(const std::string& message) : Failure(message, Unusable) {}
};

/// A formula in an option is wrong; what() is the message of the language, `column` counts in the formula from 1.
class FormulaError : public Failure {
public:
    /// `option`: as it is shown, "--until".
    FormulaError(std::string option, std::string formula, const ParseError& cause)
        : Failure(cause.what(), Unusable),
          option_(std::move(option)),
          formula_(std::move(formula)),
          column_(cause.column()),
          token_(cause.token()) {}

    const std::string& option() const { return option_; }
    const std::string& formula() const { return formula_; }
    int column() const { return column_; }
    const std::string& token() const { return token_; }

private:
    std::string option_;
    std::string formula_;
    int column_;
    std::string token_;
};

}  // namespace zirk::solve
