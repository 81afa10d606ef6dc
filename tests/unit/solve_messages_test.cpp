// SPDX-License-Identifier: MIT
// What zirk-solve says: carets below the place, progress, statistics, and what it tells gnuplot.
#include <gtest/gtest.h>

#include "solve/messages.hpp"
#include "solve/plot_script.hpp"
#include "solve/progress.hpp"
#include "solve/summary.hpp"

using namespace zirk;
using namespace zirk::solve;

TEST(PointedAt, ACaretStandsBelowTheFirstByteAndTildesBelowTheRest) {
    EXPECT_EQ(pointedAt("y' = omgea*x;", 6, 5), "y' = omgea*x;\n     ^~~~~\n");
    EXPECT_EQ(pointedAt("x", 1, 1), "x\n^\n");
    // Nothing is wrong but the place, or the line ends too early.
    EXPECT_EQ(pointedAt("ab", 2, 0), "ab\n ^\n");
    EXPECT_EQ(pointedAt("ab", 3, 0), "ab\n  ^\n");
    EXPECT_EQ(pointedAt("ab", 99, 7), "ab\n  ^\n");
    EXPECT_EQ(pointedAt("", 1, 0), "\n^\n");
}

TEST(PointedAt, TabsStayTabsSoThatTheCaretStandsRight) {
    EXPECT_EQ(pointedAt("\ta =\tb;", 6, 1), "\ta =\tb;\n\t   \t^\n");
}

TEST(PointedAt, CharactersOfSeveralBytesAreOnePlaceWide) {
    EXPECT_EQ(pointedAt("größe = z;", 11, 1), "größe = z;\n        ^\n");
    EXPECT_EQ(pointedAt("größe", 1, 7), "größe\n^~~~~\n");
}

TEST(PointedAt, WhatATerminalWouldObeyIsShownAsItsCode) {
    EXPECT_EQ(pointedAt("a\033[1mb", 6, 1), "a<0x1B>[1mb\n          ^\n");
    EXPECT_EQ(pointedAt("\xff"
                        "b",
                        1, 1),
              "<0xFF>b\n^~~~~~\n");
    EXPECT_EQ(printable("one\ntwo\t\x7f\xc2\x9b"), "one<0x0A>two<0x09><0x7F><0xC2><0x9B>");
    EXPECT_EQ(printable("größe \xe2\x82"), "größe <0xE2><0x82>");
}

TEST(PointedAt, LongLinesAreShownAroundThePlace) {
    const std::string line = std::string(100, 'a') + "!" + std::string(100, 'b');
    EXPECT_EQ(pointedAt(line, 101, 1),
              "..." + std::string(60, 'a') + '!' + std::string(59, 'b') + "...\n" + std::string(63, ' ') + "^\n");
    // A megabyte on one line stays readable, also when all of it is wrong.
    EXPECT_LT(pointedAt(std::string(1 << 20, 'x'), 1 << 19, 1 << 20).size(), 300U);
    // No character is cut.
    std::string umlauts;
    for (int i = 0; i < 200; ++i) umlauts += "ö";
    const std::string shown = pointedAt(umlauts, 201, 2);
    EXPECT_EQ(shown.find("<0x"), std::string::npos) << shown;
}

TEST(LineOf, CountsFromOneAndKnowsBothLineEnds) {
    EXPECT_EQ(lineOf("a\nb\r\nc", 1), "a");
    EXPECT_EQ(lineOf("a\nb\r\nc", 2), "b");
    EXPECT_EQ(lineOf("a\nb\r\nc", 3), "c");
    EXPECT_EQ(lineOf("a\nb\r\nc", 4), "");
}

TEST(Messages, LookAsCompilersWriteThem) {
    const Messages messages(false);
    const ParseError parse("undefined name \"omgea\"", 2, 6, "omgea");
    EXPECT_EQ(messages.atSource("model.zirk", "k = 1;\ny' = omgea*x;\n", parse),
              "model.zirk:2:6: error: undefined name \"omgea\"\ny' = omgea*x;\n     ^~~~~\n");
    EXPECT_EQ(messages.inOption(FormulaError("--until", "x-", ParseError("the formula ends", 1, 3, ""))),
              "zirk-solve: --until: error: the formula ends\nx-\n  ^\n");
    EXPECT_EQ(messages.plain("warning", "a\nb"), "zirk-solve: warning: a<0x0A>b\n");
    EXPECT_EQ(messages.atSource("model.zirk", "k = 1;\n", ParseError("k: no", 0, 0, "")),
              "zirk-solve: --set: error: k: no\n");
    EXPECT_EQ(messages.atSource("<stdin>", "", ParseError("empty", 1, 1, "")), "<stdin>:1:1: error: empty\n");
}

TEST(Messages, AreColouredOnRequestOnly) {
    EXPECT_EQ(Messages(true).plain("error", "no"), "\033[1mzirk-solve: \033[1;31merror:\033[0m no\n");
}

TEST(Progress, TellsShareTimeStepsAndRest) {
    EXPECT_EQ(progressText(0.25L, 2.5L, 1234, 10), "25% of the time, t = 2.5, 1234 steps, about 30 s left");
    EXPECT_EQ(progressText(0.999L, 1, 1, 0.5), "99% of the time, t = 1, 1 step");
    EXPECT_EQ(progressText(0, 0, 0, 5), "0% of the time, t = 0, 0 steps");
}

TEST(Progress, RoundsDurationsToWhatMatters) {
    EXPECT_EQ(durationText(0.4), "0 s");
    EXPECT_EQ(durationText(59.4), "59 s");
    EXPECT_EQ(durationText(59.6), "1 min 0 s");
    EXPECT_EQ(durationText(3 * 3600 + 125), "3 h 2 min");
    EXPECT_EQ(durationText(50 * 3600), "2 d 2 h");
    EXPECT_EQ(durationText(1e30), "many years");
}

TEST(Summary, TellsStepsOrdersAndLengths) {
    IntegratorStatistics statistics;
    statistics.steps = 4;
    statistics.orders = 90;
    statistics.repeated = 1;
    statistics.jumps = 2;
    statistics.shortestStep = 0.125L;
    statistics.longestStep = 2;
    EXPECT_EQ(summaryText(statistics, 0.25),
              "4 steps of mean order 22.5, 1 repeated, 2 ended by jumps\nlengths from 0.125 to 2; 0.250 s\n");
    EXPECT_EQ(summaryText(IntegratorStatistics(), 0).substr(0, 26), "0 steps of mean order 0.0,");
}

TEST(PlotScript, QuotesNamesSoThatNothingInThemIsSpecial) {
    EXPECT_EQ(gnuplotQuoted("x''"), "'x'''''");
    EXPECT_EQ(gnuplotQuoted("a_b^{2}\\n"), "'a_b^{2}\\n'");
}

TEST(PlotScript, DrawsEveryColumnOverTheFirst) {
    const PlotScript script{Picture::Svg, "out.svg", "rows", {"t", "x", "x'"}};
    const std::string text = script.text();
    EXPECT_NE(text.find("set terminal svg "), std::string::npos);
    EXPECT_NE(text.find("set output 'out.svg'\n"), std::string::npos);
    EXPECT_NE(text.find("plot 'rows' using 1:2 title 'x' with lines"), std::string::npos);
    EXPECT_NE(text.find("'rows' using 1:3 title 'x''' with lines"), std::string::npos);
    EXPECT_EQ(text.find("set ylabel"), std::string::npos);
}

TEST(PlotScript, ASingleCurveIsNamedAtItsAxis) {
    const std::string text = PlotScript{Picture::Png, "o", "r", {"x", "y"}, false}.text();
    EXPECT_NE(text.find("set ylabel 'y' noenhanced"), std::string::npos);
    EXPECT_NE(text.find("unset key"), std::string::npos);
    EXPECT_NE(text.find("with points"), std::string::npos);
}

TEST(PlotScript, OfManyCurvesOnlyTheEndsHaveNames) {
    PlotScript script{Picture::Pdf, "o", "r", {"t"}};
    for (int i = 1; i <= 40; ++i) script.columns.push_back("u" + std::to_string(i));
    const std::string text = script.text();
    EXPECT_NE(text.find("title 'u1' "), std::string::npos);
    EXPECT_NE(text.find("title 'u40' "), std::string::npos);
    EXPECT_EQ(text.find("title 'u2'"), std::string::npos);
}
