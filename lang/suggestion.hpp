// SPDX-License-Identifier: MIT
// What somebody may have meant by a word that nobody knows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zirk {

/// Keeps the nearest of many words; of equally near ones the first.
class Suggestion {
public:
    explicit Suggestion(std::string_view wanted);

    void consider(std::string_view candidate);
    /// The written forms of all functions.
    void considerFunctions();

    /// `; did you mean "omega"?`, or nothing when no candidate was near.
    std::string text() const;

private:
    std::string_view wanted_;
    std::size_t limit_;
    std::string nearest_;
};

/// Edits that lead from one word to the other: bytes put in, left out, replaced, or neighbours exchanged. More than
/// `most` come back as most + 1.
std::size_t editDistance(std::string_view a, std::string_view b, std::size_t most);

/// What to write for a function or constant that other languages have: `write ln(u)` for "log". Empty for all others.
std::string_view customaryWord(std::string_view word);

}  // namespace zirk
