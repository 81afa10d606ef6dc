// SPDX-License-Identifier: MIT
// Texts read as mathematics, and read again from what they are explained by.
//
// The input is a text of equations. Where its first line is a comment, the words of that line are settings, formulas to
// be read in the names of the problem, and the time of the start values:
//     // k=2*pi x'=3 @x*k @ 5
#include "zirk/problem.hpp"

#include <algorithm>
#include <sstream>
#include <vector>

#include "lang/problem_content.hpp"
#include "tests/fuzz/harness.hpp"

using namespace zirk;

namespace {

struct Request {
    ProblemOptions options;
    std::vector<std::string> formulas;
};

Request requestOf(const std::string& text) {
    Request request;
    if (text.compare(0, 2, "//") != 0) return request;
    std::istringstream words(text.substr(2, text.find('\n') - 2));
    for (std::string word; words >> word;) {
        const std::size_t equals = word.find('=');
        if (word[0] == '@') {
            request.formulas.push_back(word.substr(1));
        } else if (equals != std::string::npos) {
            request.options.settings.push_back({word.substr(0, equals), word.substr(equals + 1)});
        } else if (word == "5") {
            request.options.start = 5;
        }
    }
    return request;
}

/// Where an error says it is, its token is.
void requirePlace(const ParseError& error, const std::string& text) {
    require(!error.text().empty() && error.text().find('\n') == std::string::npos, "an error is one line");
    require(error.what() == error.text(), "an error has no tag: " + error.text());
    require(error.line() >= 1 && error.column() >= 1, "an error has a place: " + error.text());
    std::size_t begin = 0;
    for (int line = 1; line < error.line(); ++line) {
        begin = text.find('\n', begin);
        require(begin != std::string::npos, "the line of an error exists: " + error.text());
        ++begin;
    }
    const std::size_t at = begin + static_cast<std::size_t>(error.column()) - 1;
    require(at <= text.size() && text.compare(at, error.token().size(), error.token()) == 0,
            "the token of an error stands at its place: " + error.text());
    if (error.token().empty()) require(at == text.size(), "only the end has no token: " + error.text());
}

void readFormula(const Problem& problem, const std::string& text) {
    try {
        const Expression expression = problem.expression(text);
        require(expression.text() == text, "a formula keeps its text");
    } catch (const ParseError& error) {
        requirePlace(error, text);
    }
    try {
        const real value = problem.constant(text);
        require(value - value == 0, "constants are finite");
    } catch (const ParseError& error) {
        requirePlace(error, text);
    }
}

void requireSameStarts(const Problem& problem, const Problem& again) {
    const auto sorted = [](std::vector<std::string> names) {
        std::sort(names.begin(), names.end());
        return names;
    };
    require(sorted(problem.names()) == sorted(again.names()), "an explanation has the same names");
    const auto& variables = ProblemAccess::of(problem).variables;
    const auto& others = ProblemAccess::of(again).variables;
    require(variables.size() == others.size(), "an explanation has the same variables");
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const bool isSame = variables[i].name == others[i].name && variables[i].start == others[i].start;
        require(isSame, "an explanation has the same start values: " + variables[i].name);
    }
}

void readAndExplain(const std::string& text, const Request& request) {
    const Problem problem = Problem::fromText(text, request.options);
    for (const std::string& name : problem.names()) problem.expression(name);
    for (const std::string& formula : request.formulas) readFormula(problem, formula);
    ProblemOptions bare;
    bare.start = request.options.start;
    const std::string first = problem.explain();
    try {
        const Problem again = Problem::fromText(first, bare);
        requireSameStarts(problem, again);
        // Operands may change places the first time.
        const std::string second = again.explain();
        const std::string third = Problem::fromText(second, bare).explain();
        require(second == third, "explanations stay as they are:\n" + second + "and\n" + third);
    } catch (const ParseError& error) {
        require(false, "an explanation reads back: " + error.text() + "\n" + first);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    if (makesManyVariables(text)) return 0;
    const Request request = requestOf(text);
    try {
        readAndExplain(text, request);
    } catch (const ParseError& error) {
        if (error.line() != 0) {
            requirePlace(error, text);
        } else {
            require(error.text().compare(0, 8, "setting ") == 0, "an error without a line is a setting's");
        }
    }
    return 0;
}
