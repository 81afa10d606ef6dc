// SPDX-License-Identifier: MIT
// Errors and warnings as compilers write them.
#pragma once

#include <string>
#include <string_view>

#include "solve/failure.hpp"

namespace zirk::solve {

/// A place in a text and what is wrong there.
struct Diagnostic {
    /// What stands before the message: "model.zirk:3:14" or "zirk-solve: --until".
    std::string where;
    std::string message;
    /// The line of the text, and the place in it; column 0 for none. Columns count bytes from 1.
    std::string_view line;
    int column = 0;
    /// Length of what is wrong, in bytes.
    std::size_t length = 0;
};

/// Composes messages; all of them end with a line end.
class Messages {
public:
    /// With colours or without.
    explicit Messages(bool isColoured) : isColoured_(isColoured) {}

    /// "zirk-solve: error: ..." and the like. `kind` is "error" or "warning".
    std::string plain(const std::string& kind, const std::string& message) const;
    /// With the line and a caret below the place.
    std::string at(const Diagnostic& diagnostic) const;
    /// Of equations in a file.
    std::string atSource(const std::string& file, std::string_view source, const ParseError& error) const;
    /// Of the expression in an option.
    std::string inOption(const FormulaError& error) const;

private:
    std::string headed(const std::string& where, const std::string& kind, const std::string& message) const;

    bool isColoured_;
};

/// The line with this number, from 1, without its end; empty behind the last one.
std::string_view lineOf(std::string_view text, int number);

/// Text from outside on one line and without bytes that a terminal would obey: "<0x07>".
std::string printable(std::string_view text);

/// Two lines: a line of a text, as far as it is near the place, and a caret below it with tildes to the end of what is
/// wrong. Tabs stay tabs in both, so that the caret stands right; what cannot be printed is shown as "<0x07>".
std::string pointedAt(std::string_view line, int column, std::size_t length);

}  // namespace zirk::solve
