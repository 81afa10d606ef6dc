// SPDX-License-Identifier: MIT
// The command line of zirk-solve: what it becomes, and what is refused.
#include <gtest/gtest.h>

#include <set>

#include "solve/comma_list.hpp"
#include "solve/failure.hpp"
#include "solve/option_table.hpp"
#include "solve/options.hpp"
#include "solve/similar_name.hpp"

using namespace zirk;
using namespace zirk::solve;

namespace {

Request requestOf(std::vector<std::string> words) {
    words.insert(words.begin(), "zirk-solve");
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    return readCommandLine(static_cast<int>(words.size()), argv.data());
}

/// What is said against a command line; empty when it is taken.
std::string refusalOf(const std::vector<std::string>& words) {
    try {
        requestOf(words);
    } catch (const UsageError& error) {
        EXPECT_EQ(error.status(), Unusable);
        return error.what();
    }
    return "";
}

using Names = std::vector<std::string>;

}  // namespace

TEST(SolveOptions, NothingReadsStandardInputAndLeavesEverythingOpen) {
    const Request request = requestOf({});
    EXPECT_EQ(request.task, Task::Solve);
    EXPECT_EQ(request.file, "-");
    EXPECT_FALSE(request.end || request.start || request.tolerance || request.maxStep || request.columns);
    EXPECT_FALSE(request.choosesRows() || request.quiet || request.verbose || request.plot || request.format);
}

TEST(SolveOptions, StandBeforeAndBehindTheFile) {
    const Request request = requestOf({"-t", "2*pi", "swing.zirk", "--digits=3", "-qv"});
    EXPECT_EQ(request.file, "swing.zirk");
    EXPECT_EQ(request.end, "2*pi");
    EXPECT_EQ(request.digits, 3);
    EXPECT_TRUE(request.quiet);
    EXPECT_TRUE(request.verbose);
}

TEST(SolveOptions, BehindTwoDashesEverythingIsAFile) {
    EXPECT_EQ(requestOf({"-q", "--", "-v"}).file, "-v");
    EXPECT_FALSE(requestOf({"--", "-v"}).verbose);
    EXPECT_EQ(requestOf({"-"}).file, "-");
}

TEST(SolveOptions, LongNamesMayBeCutWhereTheyStayClear) {
    EXPECT_EQ(requestOf({"--tol=1e-9"}).tolerance, "1e-9");
    EXPECT_EQ(refusalOf({"--st=1"}), "the option --st could be --start, --steps");
}

TEST(SolveOptions, NegativeNumbersAreValues) {
    EXPECT_EQ(requestOf({"-t", "-5"}).end, "-5");
    EXPECT_EQ(requestOf({"--at", "-1,-2"}).at, (Names{"-1", "-2"}));
}

TEST(SolveOptions, TheLastOfSeveralValuesCountsAndListsGrow) {
    const Request request =
        requestOf({"-t", "1", "-t", "2", "--until=x", "--until=y:up", "-s", "a=1", "-s", "y' = 2*pi"});
    EXPECT_EQ(request.end, "2");
    ASSERT_EQ(request.until.size(), 2U);
    EXPECT_EQ(request.until[0].text, "x");
    EXPECT_EQ(request.until[0].which, Crossing::Any);
    EXPECT_EQ(request.until[1].text, "y");
    EXPECT_EQ(request.until[1].which, Crossing::Up);
    ASSERT_EQ(request.settings.size(), 2U);
    EXPECT_EQ(request.settings[1].name, "y'");
    EXPECT_EQ(request.settings[1].value, " 2*pi");
}

TEST(SolveOptions, ASettingIsCutAtItsFirstEqualsSign) {
    EXPECT_EQ(requestOf({"-s", "a=b=c"}).settings[0].value, "b=c");
    EXPECT_EQ(refusalOf({"-s", "a"}), "--set takes NAME=VALUE, not \"a\"");
    EXPECT_EQ(refusalOf({"-s", "=1"}), "--set takes NAME=VALUE, not \"=1\"");
}

TEST(SolveOptions, OnlyUpAndDownBelongToACrossing) {
    EXPECT_EQ(requestOf({"--crossings=x*y:down"}).crossings[0].which, Crossing::Down);
    EXPECT_EQ(requestOf({"--crossings=x*y:down"}).crossings[0].text, "x*y");
    // Whoever reads the formula says what is wrong with it.
    EXPECT_EQ(requestOf({"--crossings=x:over"}).crossings[0].text, "x:over");
}

TEST(SolveOptions, NumbersOfRowsDigitsAndThreadsHaveBounds) {
    EXPECT_EQ(requestOf({"-n", "1000000000000"}).rows, 1000000000000U);
    EXPECT_EQ(requestOf({"-j", "8"}).threads, 8U);
    for (const char* text : {"0", "-1", "", "ten", "1.5", "1e3", "1000000000001", "99999999999999999999999"}) {
        EXPECT_NE(refusalOf({std::string("--rows=") + text}), "") << text;
    }
    EXPECT_EQ(refusalOf({"-d", "22"}), "--digits takes a whole number from 1 to 21, not \"22\"");
    EXPECT_NE(refusalOf({"-j", "0"}), "");
}

TEST(SolveOptions, EveryFormatHasItsName) {
    EXPECT_EQ(requestOf({"-f", "table"}).format, Format::Table);
    EXPECT_EQ(requestOf({"-f", "csv"}).format, Format::Csv);
    EXPECT_EQ(requestOf({"-f", "tsv"}).format, Format::Tsv);
    EXPECT_EQ(requestOf({"-f", "json"}).format, Format::Json);
    EXPECT_EQ(refusalOf({"-f", "xml"}), "--format takes table, csv, tsv or json, not \"xml\"");
}

TEST(SolveOptions, WaysToChooseRowsExcludeEachOther) {
    const std::vector<std::string> ways = {"--rows=3", "--every=1", "--at=1", "--steps", "--last"};
    for (const std::string& a : ways) {
        EXPECT_EQ(refusalOf({a}), "");
        for (const std::string& b : ways) EXPECT_EQ(refusalOf({a, b}) != "", a != b) << a << ' ' << b;
    }
    EXPECT_EQ(refusalOf({"--last", "--rows=3"}), "--rows and --last exclude each other");
}

TEST(SolveOptions, APictureHasNoRows) {
    EXPECT_EQ(refusalOf({"-p", "a.svg", "-n", "5", "--plot-x=x"}), "");
    EXPECT_EQ(refusalOf({"-p", "a.svg", "-f", "csv"}), "--plot and --format exclude each other");
    EXPECT_EQ(refusalOf({"-p", "a.svg", "--last"}), "--plot and --last exclude each other");
    EXPECT_EQ(refusalOf({"-p", "a.gif"}), "--plot takes a file that ends in .svg, .png or .pdf, not \"a.gif\"");
    EXPECT_NE(refusalOf({"-p", "svg"}), "");
    EXPECT_EQ(refusalOf({"--plot-x=x"}), "--plot-x needs --plot");
}

TEST(SolveOptions, RefusalsNameTheOptionAndWhatIsLikeIt) {
    EXPECT_EQ(refusalOf({"--fromat=csv"}), "unknown option --fromat; did you mean --format?");
    EXPECT_EQ(refusalOf({"file", "--evry=2"}), "unknown option --evry; did you mean --every?");
    EXPECT_EQ(refusalOf({"--bogus"}), "unknown option --bogus");
    EXPECT_EQ(refusalOf({"-qx"}), "unknown option -x");
    EXPECT_EQ(refusalOf({"-t"}), "the option --end needs an argument, T");
    EXPECT_EQ(refusalOf({"--until"}), "the option --until needs an argument, EXPR");
    EXPECT_EQ(refusalOf({"--quiet=yes"}), "the option --quiet takes no argument");
    EXPECT_EQ(refusalOf({"a", "b"}), "one file is enough, \"b\" is too many");
}

TEST(SolveOptions, HelpAndVersionEndTheReading) {
    EXPECT_EQ(requestOf({"-h", "--bogus"}).task, Task::Help);
    EXPECT_EQ(requestOf({"a", "b", "-V"}).task, Task::Version);
}

TEST(SolveOptions, HelpHasEveryOptionInLinesOfATerminal) {
    const std::string help = helpText();
    std::set<std::string> seen;
    for (const OptionRow& row : optionRows()) {
        EXPECT_TRUE(seen.insert(row.name).second) << row.name;
        EXPECT_TRUE(row.letter == 0 || seen.insert(std::string(1, row.letter)).second) << row.letter;
        EXPECT_NE(help.find(std::string("--") + row.name + (row.argument != nullptr ? "=" : " ")), std::string::npos);
    }
    for (std::size_t begin = 0, end = 0; begin < help.size(); begin = end + 1) {
        end = help.find('\n', begin);
        EXPECT_LE(end - begin, 84U) << help.substr(begin, end - begin);
    }
}

TEST(CommaList, IsCutOutsideOfBracketsOnly) {
    EXPECT_EQ(commaList("a,b"), (Names{"a", "b"}));
    EXPECT_EQ(commaList(" x , f(a,(b,c)) , y' "), (Names{"x", "f(a,(b,c))", "y'"}));
    EXPECT_EQ(commaList(""), (Names{""}));
    EXPECT_EQ(commaList("a,,b,"), (Names{"a", "", "b", ""}));
    EXPECT_EQ(commaList("a),b"), (Names{"a)", "b"}));
}

TEST(SimilarName, IsTheOneWithTheFewestChanges) {
    const Names names = {"end", "every", "explain"};
    EXPECT_EQ(similarName("evrey", names), "every");
    EXPECT_EQ(similarName("explian", names), "explain");
    EXPECT_EQ(similarName("ned", names), "end");
    // Half of three letters is one change; this takes two.
    EXPECT_EQ(similarName("edn", {"ende"}), "");
    EXPECT_EQ(similarName("ende", names), "end");
    EXPECT_EQ(similarName("something", names), "");
    EXPECT_EQ(similarName("", names), "");
}
