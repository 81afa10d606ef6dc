// SPDX-License-Identifier: MIT
// Words into items; nothing here depends on what a name means.
#include "lang/problem_reader.hpp"

#include <locale.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "expr/elementary.hpp"
#include "lang/problem_grammar.hpp"
#include "lang/problem_scanner.hpp"

namespace zirk {

namespace {

constexpr real piValue = 3.14159265358979323846264338327950288L;

/// As strtold does where the decimal point is a point.
real literalValue(const char* literal) {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtold_l(literal, nullptr, plain);
}

ExprType functionWritten(std::string_view word) {
    for (const ElementaryFunction& function : elementaryFunctions) {
        for (const std::string_view form : function.written) {
            if (form == word) return function.kind;
        }
    }
    return ExprType::Nothing;
}

bool isZero(const char* literal) {
    for (; *literal != '\0' && *literal != 'e' && *literal != 'E'; ++literal) {
        if (*literal != '0' && *literal != '.') return false;
    }
    return true;
}

}  // namespace

ProblemReader::ProblemReader(std::string_view text, Kind kind, std::string origin) : kind_(kind) {
    statements_.text = text;
    statements_.origin = std::move(origin);
    // A byte order mark says nothing here.
    if (text.substr(0, 3) == "\xef\xbb\xbf") given_ = reached_ = 3;
}

Statements ProblemReader::read(std::string_view text, Kind kind, std::string origin) {
    ProblemReader reader(text, kind, std::move(origin));
    const ProblemScanner scanner(reader);
    problem_parse(scanner.handle(), reader);
    return std::move(reader.statements_);
}

int ProblemReader::startToken() {
    if (started_) return 0;
    started_ = true;
    if (kind_ == Kind::Problem) return PROBLEM_TEXT;
    return kind_ == Kind::Formula ? FORMULA_TEXT : TARGET_TEXT;
}

std::size_t ProblemReader::read(char* buffer, std::size_t size) {
    const std::size_t count = statements_.text.copy(buffer, size, given_);
    given_ += count;
    return count;
}

Place ProblemReader::advance(std::size_t length) {
    const Place place{reached_, static_cast<std::uint32_t>(length)};
    reached_ += length;
    return place;
}

std::uint32_t ProblemReader::keepNumber(real value) {
    statements_.numbers.push_back(value);
    return static_cast<std::uint32_t>(statements_.numbers.size() - 1);
}

std::uint32_t ProblemReader::number(const char* literal, const Place& place) {
    const real value = literalValue(literal);
    if (!std::isfinite(value)) statements_.fail(place, "number " + quoted(literal) + " is too large");
    if (value == 0 && !isZero(literal)) statements_.fail(place, "number " + quoted(literal) + " is too small");
    return keepNumber(value);
}

int ProblemReader::word(std::string_view text, PROBLEM_STYPE& value) {
    if (text == "pi") return PI;
    if (text == "t") return T;
    value.FUNCTION = functionWritten(text);
    if (value.FUNCTION != ExprType::Nothing) {
        function_ = {reached_ - text.size(), static_cast<std::uint32_t>(text.size())};
        return FUNCTION;
    }
    const auto [place, isNew] = names_.emplace(std::string(text), static_cast<std::uint32_t>(statements_.names.size()));
    if (isNew) statements_.names.push_back(place->first);
    value.NAME = place->second;
    return NAME;
}

std::uint32_t ProblemReader::primes(const char* digits) {
    const unsigned long count = std::strtoul(digits, nullptr, 10);
    return static_cast<std::uint32_t>(std::min<unsigned long>(count, std::numeric_limits<std::uint32_t>::max()));
}

Target ProblemReader::target(std::uint32_t name, std::uint32_t primes, const Place& namePlace,
                             const Place& primesPlace) const {
    const std::size_t end =
        primesPlace.length == 0 ? namePlace.offset + namePlace.length : primesPlace.offset + primesPlace.length;
    return {name, primes, {namePlace.offset, static_cast<std::uint32_t>(end - namePlace.offset)}};
}

void ProblemReader::equation(const Target& target, const FormulaRange& formula) {
    statements_.list.push_back({Statement::Kind::Equation, target, formula, {}, {}});
}

void ProblemReader::equation(const Target& target, const FormulaRange& formula, const Place& startPlace,
                             const FormulaRange& start) {
    statements_.list.push_back({Statement::Kind::EquationWithStart, target, formula, start, startPlace});
}

void ProblemReader::startValue(const Target& target, const FormulaRange& time, const FormulaRange& start) {
    statements_.list.push_back({Statement::Kind::StartValue, target, time, start, target.place});
}

FormulaRange ProblemReader::formula(const Place& first) {
    const std::size_t begin = std::exchange(formulaBegin_, statements_.items.size());
    return {begin, formulaBegin_, first};
}

void ProblemReader::operation(Operation operation, const Place& place) {
    // A literal takes its sign, so that a number reads back as the one node that it is.
    if (operation == Operation::Negate && statements_.items.back().operation == Operation::Number) {
        real& number = statements_.numbers[statements_.items.back().index];
        number = -number;
        return;
    }
    statements_.items.push_back({place, operation, ExprType::Nothing, 0, 0});
}

void ProblemReader::function(ExprType kind, const Place& place) {
    statements_.items.push_back({place, Operation::Function, kind, 0, 0});
}

void ProblemReader::numberItem(std::uint32_t number, const Place& place) {
    statements_.items.push_back({place, Operation::Number, ExprType::Nothing, number, 0});
}

void ProblemReader::pi(const Place& place) { numberItem(keepNumber(piValue), place); }

void ProblemReader::reference(const Target& target) {
    statements_.items.push_back({target.place, Operation::Variable, ExprType::Nothing, target.name, target.primes});
}

void* ProblemReader::claimStack(std::size_t size) {
    stacks_.push_back(std::unique_ptr<char[]>(new char[size]));
    return stacks_.back().get();
}

void ProblemReader::dropStack(const void* stack) {
    const auto found = std::find_if(stacks_.begin(), stacks_.end(), [&](const auto& s) { return s.get() == stack; });
    if (found != stacks_.end()) stacks_.erase(found);
}

}  // namespace zirk
