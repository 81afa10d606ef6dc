// SPDX-License-Identifier: MIT
// A text as it was read: statements in its order, formulas as lists of items, every word with its place.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "formula/graph.hpp"

namespace zirk {

/// A word of a text, in bytes from its beginning.
struct Place {
    std::size_t offset;
    std::uint32_t length;
};

/// A name and the number of its primes.
struct Target {
    std::uint32_t name;
    std::uint32_t primes;
    Place place;
};

/// Items from `begin` to before `end`, operands before what is made from them.
struct FormulaRange {
    std::size_t begin;
    std::size_t end;
    /// Of its first word.
    Place place;
};

/// One item of a formula in postfix order. A Variable stands for any name, which nothing is known of yet.
struct FormulaItem {
    Place place;
    Operation operation;
    /// Kind of a Function.
    ExprType function;
    /// Which number, or which name.
    std::uint32_t index;
    std::uint32_t primes;
};

/// "target = formula;", "target = formula & start;" or "target(time) = start;".
struct Statement {
    enum class Kind { Equation, EquationWithStart, StartValue };

    Kind kind;
    Target target;
    /// The right-hand side of an equation; the time of a start value.
    FormulaRange formula;
    FormulaRange start;
    /// Of "&" or of the start value's target.
    Place startPlace;
};

/// What the grammar found in one text.
struct Statements {
    std::string_view text;
    /// What an error names before its message where the text is none that has lines: "setting k=2".
    std::string origin;

    std::vector<std::string> names;
    std::vector<real> numbers;
    std::vector<FormulaItem> items;
    std::vector<Statement> list;
    /// Of a text that is a formula or a name alone.
    FormulaRange formula{};
    Target target{};

    /// Throws a ParseError with the place in this text.
    [[noreturn]] void fail(const Place& place, const std::string& message) const;

    /// Line of a place, from 1.
    int lineOf(const Place& place) const;

    /// "x''" for a name and primes; many primes as a number.
    std::string written(std::uint32_t name, std::uint32_t primes) const;
    std::string written(const Target& named) const { return written(named.name, named.primes); }
};

/// "x''", "x'4".
std::string writtenDerivative(const std::string& name, std::uint32_t primes);

/// In quotes for a message: bytes that do not print are escaped, and what is long is cut short.
std::string quoted(std::string_view word);

/// Bytes of the valid UTF-8 sequence that a text begins with; 0 where there is none.
std::size_t utf8Length(std::string_view text);

}  // namespace zirk
