// SPDX-License-Identifier: MIT
// What the scanner and the grammar of problems call: one text becomes statements.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "lang/statements.hpp"

union PROBLEM_STYPE;

namespace zirk {

/// What could stand where a word is wrong.
struct ExpectedWords {
    bool name = false;
    bool formula = false;
    bool operators = false;
    bool end = false;
    std::string marks;
};

/// Reads one text. Throws a ParseError for the first thing that is not of the language; what names mean is not asked
/// here.
class ProblemReader {
public:
    /// What a text is: the token that it begins with in the grammar.
    enum class Kind { Problem, Formula, Target };

    /// The text must outlive the statements.
    static Statements read(std::string_view text, Kind kind, std::string origin = {});

    // For the scanner.
    int startToken();
    std::size_t read(char* buffer, std::size_t size);
    /// The place of the next `length` bytes, which are done with.
    Place advance(std::size_t length);
    void beginComment(const Place& place) { comment_ = place; }
    [[noreturn]] void unclosedComment() const;
    [[noreturn]] void strayByte(const Place& place) const;
    std::uint32_t number(const char* literal, const Place& place);
    /// Token of a word, and its value.
    int word(std::string_view text, PROBLEM_STYPE& value);
    /// Saturates.
    static std::uint32_t primes(const char* digits);

    // For the grammar.
    Target target(std::uint32_t name, std::uint32_t primes, const Place& namePlace, const Place& primesPlace) const;
    [[noreturn]] void taken(const Place& place, const char* what) const;
    void equation(const Target& target, const FormulaRange& formula);
    void equation(const Target& target, const FormulaRange& formula, const Place& startPlace,
                  const FormulaRange& start);
    void startValue(const Target& target, const FormulaRange& time, const FormulaRange& start);
    void formulaAlone(const FormulaRange& formula) { statements_.formula = formula; }
    void targetAlone(const Target& target) { statements_.target = target; }
    /// All items since the last formula.
    FormulaRange formula(const Place& first);
    void operation(Operation operation, const Place& place);
    void function(ExprType kind, const Place& place);
    void numberItem(std::uint32_t number, const Place& place);
    void pi(const Place& place);
    void reference(const Target& target);
    [[noreturn]] void unknownFunction(std::uint32_t name, const Place& place) const;
    [[noreturn]] void stepConstruct(const Place& place) const;
    [[noreturn]] void unexpected(const Place& place, const ExpectedWords& expected) const;

    /// A stack of the parser for twice as many entries, with the present ones. It ends with the reader at the latest.
    template <class Entry>
    Entry* largerStack(const Entry* stack, std::size_t count) {
        auto* larger = static_cast<Entry*>(claimStack(2 * count * sizeof(Entry)));
        std::memcpy(larger, stack, count * sizeof(Entry));
        dropStack(stack);
        return larger;
    }

private:
    ProblemReader(std::string_view text, Kind kind, std::string origin);

    void* claimStack(std::size_t size);
    void dropStack(const void* stack);
    std::uint32_t keepNumber(real value);
    std::string_view textAt(const Place& place) const { return statements_.text.substr(place.offset, place.length); }

    Statements statements_;
    Kind kind_;
    bool started_ = false;
    std::size_t given_ = 0;
    std::size_t reached_ = 0;
    std::size_t formulaBegin_ = 0;
    Place comment_{};
    /// The last name of a function, for an error that is seen one word late.
    Place function_{};
    std::unordered_map<std::string, std::uint32_t> names_;
    std::vector<std::unique_ptr<char[]>> stacks_;
};

}  // namespace zirk
