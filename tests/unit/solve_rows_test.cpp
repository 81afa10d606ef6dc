// SPDX-License-Identifier: MIT
// Rows of zirk-solve: at which times, and how they look in every format.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <sstream>

#include "solve/number.hpp"
#include "solve/row_times.hpp"
#include "solve/row_writer.hpp"

using namespace zirk;
using namespace zirk::solve;

namespace {

constexpr real infinity = std::numeric_limits<real>::infinity();

std::string shown(real x, int digits = 15, LastZeros zeros = LastZeros::Dropped) {
    std::string text;
    appendNumber(text, x, digits, zeros);
    return text;
}

std::string written(Format format, const std::vector<std::string>& columns, const std::vector<std::vector<real>>& rows,
                    int digits = 15) {
    std::ostringstream out;
    const auto writer = makeRowWriter(format, out, columns, digits);
    writer->begin();
    for (const auto& row : rows) writer->write(row.data());
    return out.str();
}

/// Times of a run whose steps end at `ends`.
std::vector<real> timesOf(const RowPlan& plan, real start, real end, const std::vector<real>& ends) {
    RowTimes times(plan, start, end);
    std::vector<real> found;
    const auto takeTo = [&](real limit) {
        for (std::optional<real> next; (next = times.next()); times.advance()) {
            if (end >= start ? *next > limit : *next < limit) break;
            found.push_back(*next);
        }
    };
    takeTo(start);
    real begin = start;
    for (const real stepEnd : ends) {
        times.enterStep(begin, stepEnd);
        takeTo(stepEnd);
        begin = stepEnd;
    }
    return found;
}

RowPlan evenPlan(std::uint64_t intervals, real spacing = 0) {
    RowPlan plan;
    plan.intervals = intervals;
    plan.spacing = spacing;
    return plan;
}

using Times = std::vector<real>;

}  // namespace

TEST(RowTimes, EvenOnesHaveEqualDistancesAndMeetTheEnd) {
    EXPECT_EQ(timesOf(evenPlan(4), 1, 3, {1.7L, 3}), (Times{1, 1.5L, 2, 2.5L, 3}));
    // Backwards.
    EXPECT_EQ(timesOf(evenPlan(2), 1, -1, {-0.5L, -1}), (Times{1, 0, -1}));
    // Each from its own number, not from the one before: no rounding adds up.
    const Times thirds = timesOf(evenPlan(3), 0, 1, {1});
    EXPECT_EQ(thirds, (Times{0, 1.0L / 3, 2.0L / 3, 1}));
}

TEST(RowTimes, AtStartThatIsTheEndThereIsOneHoweverManyIntervals) {
    EXPECT_EQ(timesOf(evenPlan(1000000000000), 2, 2, {}), (Times{2}));
}

TEST(RowTimes, SpacedOnesEndWithAShorterInterval) {
    EXPECT_EQ(intervalsOf(0, 1, 0.375L), 3);
    EXPECT_EQ(timesOf(evenPlan(3, 0.375L), 0, 1, {1}), (Times{0, 0.375L, 0.75L, 1}));
    EXPECT_EQ(timesOf(evenPlan(3, 0.375L), 0, -1, {-1}), (Times{0, -0.375L, -0.75L, -1}));
    // 0.1 is a little more than a tenth: the tenth interval still ends at 1, and no eleventh follows.
    EXPECT_EQ(intervalsOf(0, 1, 0.1L), 10);
    EXPECT_EQ(intervalsOf(0, 1, 0.1), 10);
    EXPECT_EQ(intervalsOf(0, 1, 5), 1);
}

TEST(RowTimes, OfStepsAreTheStartAndTheEnds) {
    RowPlan plan;
    plan.perStep = 1;
    EXPECT_EQ(timesOf(plan, 0, 2, {0.25L, 1.5L, 2}), (Times{0, 0.25L, 1.5L, 2}));
    plan.perStep = 2;
    plan.stepsWithRows = 2;
    EXPECT_EQ(timesOf(plan, 0, 2, {0.5L, 1.5L, 2}), (Times{0, 0.25L, 0.5L, 1, 1.5L}));
}

TEST(RowTimes, OfTwoKindsAreMergedAndEachTimeComesOnce) {
    RowPlan plan = evenPlan(2);
    plan.perStep = 1;
    EXPECT_EQ(timesOf(plan, 0, 2, {0.5L, 1, 2}), (Times{0, 0.5L, 1, 2}));
    EXPECT_EQ(timesOf(plan, 2, 0, {1.5L, 1, 0}), (Times{2, 1.5L, 1, 0}));
}

TEST(RowTimes, ListedOnesComeInTheirOrder) {
    RowPlan plan;
    plan.listed = {0, 0.5L, 7};
    EXPECT_EQ(timesOf(plan, 0, 7, {3, 7}), (Times{0, 0.5L, 7}));
    EXPECT_EQ(timesOf(RowPlan(), 0, 7, {3, 7}), Times());
}

TEST(SolveNumber, IsPlainWhereThatIsShort) {
    EXPECT_EQ(shown(0.1L), "0.1");
    EXPECT_EQ(shown(-2), "-2");
    EXPECT_EQ(shown(123456789), "123456789");
    EXPECT_EQ(shown(0.0001L), "0.0001");
    EXPECT_EQ(shown(0.00001L), "1e-05");
    EXPECT_EQ(shown(1e14L), "100000000000000");
    EXPECT_EQ(shown(1e15L), "1e+15");
    EXPECT_EQ(shown(999.9996L, 6), "1000");
    EXPECT_EQ(shown(1234567, 3), "1.23e+06");
}

TEST(SolveNumber, ZeroHasNoSignAndWhatIsNotFiniteHasAName) {
    EXPECT_EQ(shown(-0.0L), "0");
    EXPECT_EQ(shown(infinity), "inf");
    EXPECT_EQ(shown(-infinity), "-inf");
    EXPECT_EQ(shown(std::numeric_limits<real>::quiet_NaN()), "nan");
    EXPECT_EQ(shown(-std::numeric_limits<real>::quiet_NaN()), "nan");
}

TEST(SolveNumber, KeepsZerosInColumnsWhereMostFiguresAreNeeded) {
    EXPECT_EQ(shown(0.54030230586814L, 15, LastZeros::InColumns), "0.540302305868140");
    EXPECT_EQ(shown(1.5L, 15, LastZeros::InColumns), "1.5");
    EXPECT_EQ(shown(0.1234567L, 14, LastZeros::InColumns), "0.1234567");
    EXPECT_EQ(shown(0.12345678L, 14, LastZeros::InColumns), "0.12345678000000");
    EXPECT_EQ(shown(0.123456789012L, 20, LastZeros::InColumns).size(), 22U);
}

TEST(SolveNumber, AgreesWithTheCLibraryWhateverTheNumber) {
    std::mt19937_64 random(12345);
    std::uniform_real_distribution<double> mantissa(-10, 10);
    std::uniform_int_distribution<int> wide(-4900, 4900);
    std::uniform_int_distribution<int> narrow(-7, 22);
    for (int i = 0; i < 20000; ++i) {
        const int exponent = i % 2 == 0 ? wide(random) : narrow(random);
        const real x = static_cast<real>(mantissa(random)) * std::pow(10.0L, static_cast<real>(exponent));
        const int digits = 1 + i % 21;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%.*Lg", digits, x);
        ASSERT_EQ(shown(x, digits), expected) << digits;
        ASSERT_LE(shown(x, digits).size(), static_cast<std::size_t>(widestNumber(digits)));
    }
    EXPECT_EQ(shown(LDBL_MAX, 3), "1.19e+4932");
    EXPECT_EQ(shown(-LDBL_TRUE_MIN, 3), "-3.65e-4951");
}

TEST(RowWriter, TablesHaveAlignedColumns) {
    EXPECT_EQ(written(Format::Table, {"t", "x"}, {{0, 1}, {0.5L, -0.25L}}, 4),
              "#          t           x\n"
              "           0           1\n"
              "         0.5       -0.25\n");
    // A name or a number that is too long has a blank before it all the same.
    EXPECT_EQ(written(Format::Table, {"t", "averylongname"}, {{0, -1.234e-4000L}}, 4),
              "#          t averylongname\n"
              "           0 -1.234e-4000\n");
}

TEST(RowWriter, HeadingsOfTablesAreOneWordEach) {
    EXPECT_EQ(written(Format::Table, {"t", "x + y"}, {}, 4), "#          t         x+y\n");
}

TEST(RowWriter, SeparatedFieldsHaveHeadings) {
    EXPECT_EQ(written(Format::Csv, {"t", "x'"}, {{0, 1.5L}, {1, infinity}}), "t,x'\n0,1.5\n1,inf\n");
    EXPECT_EQ(written(Format::Tsv, {"t", "x, y"}, {{0, -0.0L}}), "t\tx, y\n0\t0\n");
    EXPECT_EQ(written(Format::Csv, {"a"}, {{3}}), "a\n3\n");
}

TEST(RowWriter, FieldsAreQuotedWhereTheyHaveTo) {
    EXPECT_EQ(quotedField("x", ','), "x");
    EXPECT_EQ(quotedField("f(x,y)", ','), "\"f(x,y)\"");
    EXPECT_EQ(quotedField("f(x,y)", '\t'), "f(x,y)");
    EXPECT_EQ(quotedField("a\"b", ','), "\"a\"\"b\"");
    EXPECT_EQ(quotedField("a\nb", ','), "\"a\nb\"");
}

TEST(RowWriter, JsonHasAnObjectForEveryRow) {
    EXPECT_EQ(written(Format::Json, {"t", "x'"}, {{0, 1.5L}, {1, -infinity}}),
              "{\"t\": 0, \"x'\": 1.5}\n{\"t\": 1, \"x'\": null}\n");
    EXPECT_EQ(jsonString("a\"\\\n\x01z"), "\"a\\\"\\\\\\u000a\\u0001z\"");
}
