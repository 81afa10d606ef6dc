// SPDX-License-Identifier: MIT
// Rows and headers for values that a short run does not reach.
#include "report/result_table.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

using namespace zirk;

namespace {

/// A run of a text, and the table of it.
class ResultTableTest : public testing::Test {
protected:
    void model(const std::string& text, const ClassicOptions& options = {}) {
        run_ = std::make_unique<ClassicIntegrator>(Model::fromText(text), options);
        makeTable(false);
    }

    void makeTable(bool showsSeries) {
        table_ = std::make_unique<ResultTable>(out_, *run_, layout_, selection_, numbers_, showsSeries);
    }

    void passes(int count) {
        for (int i = 0; i < count; ++i) EXPECT_EQ(run_->next(), ClassicIntegrator::Pass::Point);
    }

    std::string header() {
        out_.str("");
        table_->writeHeader();
        return out_.str();
    }

    std::string row(RowFlag flag) {
        out_.str("");
        table_->writeRow(flag);
        return out_.str();
    }

    Layout layout_;
    Selection selection_;
    NumberFormat numbers_;
    std::ostringstream out_;
    std::unique_ptr<ClassicIntegrator> run_;
    std::unique_ptr<ResultTable> table_;
};

TEST_F(ResultTableTest, ShowsTheOrderInThreeCharactersOrAsManyAsItNeeds) {
    // A start value alone defines nothing.
    model("y(0) = 1;");
    EXPECT_EQ(row(RowFlag::Clear), "  0  0.00000000000e+00\n");
    selection_.noPrintList = "y:";
    for (const auto& [order, text] : {std::pair(34, " 34 "), {123, "123 "}, {12345, "12345 "}}) {
        ClassicOptions options;
        options.step = 0.5L;
        options.fixedStep = true;
        options.limits.useAllTerms = true;
        options.limits.maxOrder = order;
        // No term is negligible, so that none is taken off the order.
        options.limits.accuracy = 0;
        model("y' = 1;", options);
        passes(2);
        EXPECT_EQ(row(RowFlag::Clear), std::string(text) + " 5.00000000000e-01\n");
    }
}

TEST_F(ResultTableTest, PutsABlankInPlaceOfTheMissingSign) {
    model("a' = 0 & 1; b' = 0 & -1; c' = 0 & -0; d' = 0 & -1/0; e' = 0 & -(0/0);");
    layout_.printOrderColumn = false;
    numbers_ = {7, 1};
    EXPECT_EQ(header(), "#  TIME a b c d e\n");
    EXPECT_EQ(row(RowFlag::Clear),
              " 0.0e+00  1.0e+00 -1.0e+00  -0.0e+00    -inf"
              "      nan\n");
}

TEST_F(ResultTableTest, NeverPadsTheTimeNorTheStep) {
    ClassicOptions options;
    options.tMax = -2;
    model("a = 1;", options);
    numbers_ = {12, 2};
    makeTable(true);
    passes(2);
    EXPECT_EQ(header(), "# ORDER TIME a log(|DY(max)|)     log(|DY(max)|)    h\n");
    EXPECT_EQ(row(RowFlag::Clear), "  0  -2.00e+00      1.00e+00 0 0 -2.00e+00\n");
}

TEST_F(ResultTableTest, WithTheFlagSetWritesNothing) {
    model("a = 1;");
    EXPECT_EQ(row(RowFlag::Set), "");
}

TEST_F(ResultTableTest, LeavesOutWhatIsNotSelectedAndNamesWithPercent) {
    model("a'' = exp(t) & 2; a'(0) = 3; b' = 0 & 4;");
    selection_.noPrintList = "b:";
    numbers_ = {0, 0};
    EXPECT_EQ(header(), "# ORDER TIME a\n");
    EXPECT_EQ(row(RowFlag::Clear), "  0  0e+00  2e+00\n");
    layout_.printTempEquations = true;
    EXPECT_EQ(header(), "# ORDER TIME %0 a a%1\n");
    EXPECT_EQ(row(RowFlag::Clear), "  0  0e+00  1e+00  2e+00  3e+00\n");
}

TEST_F(ResultTableTest, AsAMatrixStartsItsHeaderWithTheByteA0) {
    model("a' = exp(t) & 2; b' = 0 & 1e-7; c' = 0 & 1234567;");
    layout_.points3D = 2;
    EXPECT_EQ(header(), "#\xA0 a b\n# c\n");
    EXPECT_EQ(row(RowFlag::Clear), "");
    EXPECT_EQ(row(RowFlag::Set), " 2 1e-07\n 1.23457e+06\n");
    layout_.printTempEquations = true;
    EXPECT_EQ(header(), "#\xA0 a b\n# c\n");
    EXPECT_EQ(row(RowFlag::Set), " 1 2\n 1e-07 1.23457e+06\n\n");
}

TEST_F(ResultTableTest, AsAMatrixOfAllPointsNamesTheSameFileInEveryBlock) {
    model("a' = 0 & 2;");
    layout_.points3D = 1;
    layout_.all3DValues = true;
    layout_.gnuplotOutput = "svg";
    const std::string block = "e\n\nset output 'o000001.svg'\nsplot '-'  matrix with lines\n 2\n\n";
    EXPECT_EQ(row(RowFlag::Clear), block);
    EXPECT_EQ(row(RowFlag::Set), block);
}

}  // namespace
