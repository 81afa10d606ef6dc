// SPDX-License-Identifier: MIT
// What ends a compilation or a run, as programs see it.
#include "zirk/error.hpp"

#include <gtest/gtest.h>

#include "zirk/classic_integrator.hpp"

using namespace zirk;

namespace {

TEST(ErrorTest, TellsProgramsTheTextWithoutTagAndLineEnds) {
    const std::pair<const char*, const char*> cases[] = {
        {"#(ERR) Out of memory\n", "Out of memory"},
        {"\n#(ERR) Reference to undefined equation \"x\"\n", "Reference to undefined equation \"x\""},
        {"(WARN) No value\n", "No value"},
        {"#(WARN) One\n#(ERR) Two\n", "Two"},
        {"#(ERR) One\n\n \n", "One"},
        {"input in flex scanner failed\n", "input in flex scanner failed"},
        {"no line end", "no line end"},
        {"f(x) is no tag", "f(x) is no tag"},
        {"", ""},
        {"\n", ""},
    };
    for (const auto& [text, what] : cases) {
        const Error error(text, 2);
        EXPECT_STREQ(error.what(), what);
        EXPECT_EQ(error.text(), text);
        EXPECT_EQ(error.status(), 2);
    }
}

/// Where a text could not be read on.
struct Place {
    int line = 0;
    int column = 0;
    std::string token;
    std::string what;

    bool operator==(const Place& other) const {
        return line == other.line && column == other.column && token == other.token && what == other.what;
    }
};

std::ostream& operator<<(std::ostream& out, const Place& place) {
    return out << place.line << ':' << place.column << " \"" << place.token << "\": " << place.what;
}

Place placeOf(const std::string& text) {
    try {
        Model::fromText(text);
    } catch (const ParseError& error) {
        EXPECT_EQ(error.status(), 3) << text;
        return {error.line(), error.column(), error.token(), error.what()};
    }
    return {};
}

/// The parser's own message at a place.
Place unexpected(int line, int column, const std::string& token) {
    return {line, column, token, "ERROR: parse error \"" + token + "\" at line #" + std::to_string(line)};
}

TEST(ParseErrorTest, NamesLineColumnAndTokenFromOneOn) {
    EXPECT_EQ(placeOf(";"), unexpected(1, 1, ";"));
    EXPECT_EQ(placeOf("y' = 2 3;"), unexpected(1, 8, "3"));
    EXPECT_EQ(placeOf("y' = y1 long_name;"), unexpected(1, 9, "long_name"));
    EXPECT_EQ(placeOf("y' = 1; y = sin;"), unexpected(1, 16, ";"));
    EXPECT_EQ(placeOf("y''' = 1 + 2.5e3) & 1;"), unexpected(1, 17, ")"));
}

TEST(ParseErrorTest, CountsBytesAlsoOfTabsBlanksAndComments) {
    EXPECT_EQ(placeOf("\ty' =\t\t= 1;"), unexpected(1, 8, "="));
    EXPECT_EQ(placeOf("y' /* a * b */ = = 1;"), unexpected(1, 18, "="));
    EXPECT_EQ(placeOf("y' = \xc3\xa9;"), unexpected(1, 6, "\xc3"));
    EXPECT_EQ(placeOf("y' = 1 \r\v\f 2;"), unexpected(1, 12, "2"));
}

TEST(ParseErrorTest, CountsColumnsAnewInEveryLine) {
    EXPECT_EQ(placeOf("y' = 1;\n\n  z' = = 1;"), unexpected(3, 8, "="));
    EXPECT_EQ(placeOf("y' = 1;\r\nz' = = 1;"), unexpected(2, 6, "="));
    EXPECT_EQ(placeOf("y' = 1; // & 2 = = 3\n z = ;"), unexpected(2, 6, ";"));
    EXPECT_EQ(placeOf("/* one\n two\n*/ y = ;"), unexpected(3, 8, ";"));
    EXPECT_EQ(placeOf("y' = /* one\n * two */\n1 1;"), unexpected(3, 3, "1"));
}

TEST(ParseErrorTest, AtTheEndOfTheInputHasAnEmptyToken) {
    EXPECT_EQ(placeOf(""), unexpected(1, 1, ""));
    EXPECT_EQ(placeOf("y' = 1"), unexpected(1, 7, ""));
    EXPECT_EQ(placeOf("y' = 1 \t"), unexpected(1, 9, ""));
    EXPECT_EQ(placeOf("y' = 1\n"), unexpected(2, 1, ""));
    EXPECT_EQ(placeOf("y' = 1 /* 2;"), unexpected(1, 13, ""));
    EXPECT_EQ(placeOf(std::string("y' = 1\0;", 8)), unexpected(1, 7, ""));
    // The end of the input ends a comment and its line, too.
    EXPECT_EQ(placeOf("y' = 1 // 2;"), unexpected(2, 1, ""));
}

TEST(ParseErrorTest, TellsTheLastOfSeveralMessages) {
    try {
        Model::fromText("y' = 1; y(1) = 2;\ny(2) = 3; = 4;");
        ADD_FAILURE() << "accepted";
    } catch (const ParseError& error) {
        EXPECT_STREQ(error.what(), "ERROR: parse error \"=\" at line #2");
        EXPECT_EQ(error.text(),
                  "#(ERR) ERROR: Start condition must be defined for zero, not for other value \"1\" at line #1\n"
                  "#(ERR) ERROR: Start condition must be defined for zero, not for other value \"2\" at line #2\n"
                  "#(ERR) ERROR: parse error \"=\" at line #2\n");
        EXPECT_EQ(error.line(), 2);
        EXPECT_EQ(error.column(), 11);
    }
}

TEST(ParseErrorTest, IsNotWhatADerivativeOfTooHighAnOrderEndsWith) {
    try {
        Model::fromText("y(1) = 2;\ny'1000001 = 1;");
        ADD_FAILURE() << "accepted";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(),
                  "#(ERR) ERROR: Start condition must be defined for zero, not for other value \"1\" at line #1\n"
                  "#(ERR) Derivative 1000001 of \"y\" is beyond the limit of 1000000\n");
        EXPECT_EQ(error.status(), 1);
    }
}

TEST(RunErrorTest, KnowsTheTimeThatWasReached) {
    // From x = 1 on the right-hand side is not finite, whatever the step.
    ClassicOptions options;
    options.step = 1;
    options.limits.setOrder(4);
    options.tMax = 2;
    ClassicIntegrator run(Model::fromText("y' = 1 / (1 - trunc(x)); x' = 1;"), options);
    try {
        while (run.next() != ClassicIntegrator::Pass::End) {
        }
        ADD_FAILURE() << "went on";
    } catch (const RunError& error) {
        EXPECT_EQ(error.time(), 1);
        EXPECT_EQ(run.previousTime(), 1);
        EXPECT_EQ(error.status(), 1);
        EXPECT_EQ(error.text(), std::string("#(ERR) ") + error.what() + "\n");
    }
}

}  // namespace
