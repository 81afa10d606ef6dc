// SPDX-License-Identifier: MIT
// Blanks separate cells; no cell contains one.
#include "tests/random/table.hpp"

#include <sstream>
#include <stdexcept>

namespace random_systems {

namespace {

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

}  // namespace

Table readTable(const std::string& text) {
    Table table;
    std::istringstream lines(text);
    std::string line;
    if (!std::getline(lines, line)) return table;
    std::vector<std::string> words = wordsOf(line);
    const bool showsOrder = words.size() > 1 && words[1] == "ORDER";
    // The titles of the columns for all terms.
    if (line.find("log(|DY(max)|)") != std::string::npos) words.resize(words.size() - 3);
    const std::size_t first = showsOrder ? 3 : 2;
    table.names.assign(words.begin() + static_cast<std::ptrdiff_t>(first), words.end());
    const std::size_t extra = line.find("log(|DY(max)|)") != std::string::npos ? 3 : 0;
    while (std::getline(lines, line)) {
        words = wordsOf(line);
        if (words.size() != first - 1 + table.names.size() + extra)
            throw std::runtime_error("a row is not whole: " + line);
        std::size_t at = 0;
        table.heads.push_back(showsOrder ? words[at++] : "");
        table.times.push_back(words[at++]);
        for (const std::string& name : table.names) table.columns[name].push_back(words[at++]);
    }
    return table;
}

}  // namespace random_systems
