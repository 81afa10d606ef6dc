// SPDX-License-Identifier: MIT
// What a reader of problems says of words that are not of the language.
#include <algorithm>
#include <vector>

#include "lang/problem_reader.hpp"
#include "lang/suggestion.hpp"

namespace zirk {

namespace {

/// What may stand for a character of another alphabet.
std::string_view plainForm(std::string_view character) {
    constexpr std::pair<std::string_view, std::string_view> forms[] = {
        {"\xe2\x88\x92", "-"},
        {"\xe2\x80\x93", "-"},
        {"\xc3\x97", "*"},
        {"\xc2\xb7", "*"},
        {"\xe2\x8b\x85", "*"},
        {"\xc3\xb7", "/"},
        {"\xe2\x80\x99", "'"},
        {"\xe2\x80\xb2", "'"},
        {"\xe2\x80\xb3", "''"},
        {"\xc2\xb4", "'"},
        {"`", "'"},
        {"\xc2\xb2", "^2"},
        {"\xc2\xb3", "^3"},
        {"\xcf\x80", "pi"},
        {"\xc2\xa0", " "},
        {"\"", "''"},
        {"{", "("},
        {"}", ")"},
        {"#", "//"},
    };
    for (const auto& [from, to] : forms) {
        if (from == character) return to;
    }
    return {};
}

/// "a, b or c".
std::string alternatives(const std::vector<std::string>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i != 0) text += i + 1 == words.size() ? " or " : ", ";
        text += words[i];
    }
    return text;
}

std::vector<std::string> wordsFor(const ExpectedWords& expected, ProblemReader::Kind kind) {
    std::vector<std::string> words;
    // There the parser has taken the formula for complete already.
    const bool behindFormula = expected.marks.find_first_of("&;)") != std::string::npos ||
                               (expected.end && kind == ProblemReader::Kind::Formula);
    if (expected.formula) {
        words.emplace_back("a formula");
    } else if (expected.name || (expected.end && kind == ProblemReader::Kind::Problem)) {
        words.emplace_back("a name");
    }
    if (expected.operators || behindFormula) words.emplace_back("an operator");
    for (const char mark : expected.marks) {
        // A formula may begin with a bracket.
        if (mark != '(' || !expected.formula) words.push_back(quoted({&mark, 1}));
    }
    if (expected.end && kind != ProblemReader::Kind::Problem) words.emplace_back("the end");
    return words;
}

}  // namespace

void ProblemReader::unclosedComment() const { statements_.fail(comment_, "this comment is not closed"); }

void ProblemReader::strayByte(const Place& place) const {
    const std::string_view rest = statements_.text.substr(place.offset);
    const auto byte = static_cast<unsigned char>(rest[0]);
    const std::size_t length = utf8Length(rest);
    const std::string shown = quoted(rest.substr(0, std::max<std::size_t>(length, 1)));
    if (length == 0) statements_.fail(place, "byte " + shown + " is not of a text in UTF-8");
    if (byte < ' ' || byte == 0x7f) statements_.fail(place, "control character " + shown + " in the text");
    unexpected({place.offset, static_cast<std::uint32_t>(length)}, {});
}

void ProblemReader::taken(const Place& place, const char* what) const {
    statements_.fail(place, quoted(textAt(place)) + " is " + what + " and cannot be given another meaning");
}

void ProblemReader::unknownFunction(std::uint32_t name, const Place& place) const {
    const std::string& word = statements_.names[name];
    const std::string_view instead = customaryWord(word);
    if (!instead.empty()) {
        statements_.fail(place, "there is no function " + quoted(word) + "; " + std::string(instead));
    }
    Suggestion suggestion(word);
    suggestion.considerFunctions();
    if (!suggestion.text().empty()) statements_.fail(place, "unknown function " + quoted(word) + suggestion.text());
    statements_.fail(place, quoted(word) + " is not a function; for a product write \"*\" before the bracket");
}

void ProblemReader::stepConstruct(const Place& place) const {
    statements_.fail(place, "step constructs have no meaning here; write jumps with trunc");
}

void ProblemReader::unexpected(const Place& place, const ExpectedWords& expected) const {
    const std::string_view word = textAt(place);
    if (expected.marks == "(" && !expected.formula && !expected.operators && function_.length != 0) {
        const std::string name(textAt(function_));
        statements_.fail(function_, "function " + quoted(name) + " wants its operand in brackets: " + name + "(...)");
    }
    std::string message = "unexpected ";
    if (!word.empty()) {
        message += quoted(word);
    } else {
        message += kind_ == Kind::Problem ? "end of the text" : kind_ == Kind::Formula ? "end of the formula" : "end";
    }
    const std::string_view plain = plainForm(word);
    if (!plain.empty()) statements_.fail(place, message + "; write " + quoted(plain));
    const std::vector<std::string> words = wordsFor(expected, kind_);
    if (!words.empty()) message += "; expected " + alternatives(words);
    statements_.fail(place, message);
}

}  // namespace zirk
