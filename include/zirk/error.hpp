// SPDX-License-Identifier: MIT
// What ends a compilation or a run early.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "zirk/real.hpp"

namespace zirk {

/// Ends what was asked for. Memory that is not to be had is told by the standard's own std::bad_alloc and
/// std::length_error.
class [[gnu::visibility("default")]] Error : public std::runtime_error {
public:
    /// `text`: what the command writes to standard error, tags and line ends included; `status`: what it exits with.
    Error(const std::string& text, int status);

    const std::string& text() const { return text_; }
    int status() const { return status_; }
    // what() is the text without tag and line ends.

private:
    std::string text_;
    int status_;
};

/// The text of a model is not of the language, or uses what has no meaning.
class [[gnu::visibility("default")]] ParseError : public Error {
public:
    /// `text` may hold several lines; what() is the last of them.
    ParseError(const std::string& text, int line, int column, std::string token);

    /// Where the input could not go on: line and column (in bytes) count from 1; an empty token is the end of the
    /// input.
    int line() const { return line_; }
    int column() const { return column_; }
    const std::string& token() const { return token_; }

private:
    int line_;
    int column_;
    std::string token_;
};

/// A run cannot go on.
class [[gnu::visibility("default")]] RunError : public Error {
public:
    RunError(const std::string& text, real time, std::string expression = {})
        : Error(text, 1), time_(time), expression_(std::move(expression)) {}

    /// The last time that the run reached.
    real time() const { return time_; }
    /// The formula or the variable that stands in the way, as far as it is known; what() names it, too.
    const std::string& expression() const { return expression_; }

private:
    real time_;
    std::string expression_;
};

}  // namespace zirk
