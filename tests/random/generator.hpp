// SPDX-License-Identifier: MIT
// Random systems of equations with random options.
#pragma once

#include <random>
#include <string>
#include <utility>
#include <vector>

namespace random_systems {

/// One input of the program.
struct System {
    /// In the order of their bytes; none is the end of another one, so that each is selected by its own list entry.
    std::vector<std::string> names;
    std::vector<std::string> statements;
    /// Letter and argument; an option may come twice.
    std::vector<std::pair<char, std::string>> options;

    std::string text() const;
    std::vector<std::string> arguments() const;

    /// The argument of the last option of this letter; `otherwise` when there is none.
    std::string option(char letter, const std::string& otherwise) const;
};

/// The same system for the same seed, everywhere.
System makeSystem(unsigned seed);

/// The text with every name replaced by the one at the same place; what only contains a name stays.
std::string renamed(const std::string& text, const std::vector<std::string>& from, const std::vector<std::string>& to);

/// The same system under other names in the same order of bytes.
System renamed(const System& system);

/// The names that `renamed` gives.
std::vector<std::string> otherNames(const System& system);

/// The same statements in another order.
System shuffled(const System& system, unsigned seed);

}  // namespace random_systems
