// SPDX-License-Identifier: MIT
// Rows and headers for values that a short run does not reach.
#include "report/result_table.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

using namespace zirk;

namespace {

class ResultTableTest : public testing::Test {
protected:
    void enter(const std::string& name, real value, bool selected = true) {
        auto* variable = new Differential(name, Expr::Ref(new Number(0)), value);
        variable->select(selected);
        equations_.enter(variable);
    }

    std::string header() {
        out_.str("");
        table_.writeHeader();
        return out_.str();
    }

    std::string row(RowFlag flag) {
        out_.str("");
        table_.writeRow(flag);
        return out_.str();
    }

    Calculus calculus_;
    Calculus::Scope scope_{calculus_};
    EquationTable equations_;
    StiffnessSettings stiffnessSettings_;
    Layout layout_;
    NumberSettings numbers_;
    std::ostringstream out_;
    std::ostringstream log_;
    Stiffness stiffness_{stiffnessSettings_, equations_, log_};
    ResultTable table_{out_, calculus_, layout_, numbers_, equations_, stiffness_};
};

TEST_F(ResultTableTest, ShowsTheOrderInThreeCharactersOrAsManyAsItNeeds) {
    for (const auto& [order, text] : {std::pair(0, "  0 "), {34, " 34 "}, {123, "123 "}, {12345, "12345 "}}) {
        calculus_.orderUsed = order;
        EXPECT_EQ(row(RowFlag::Clear), std::string(text) + " 0.00000000000e+00\n");
    }
}

TEST_F(ResultTableTest, PutsABlankInPlaceOfTheMissingSign) {
    enter("a", 1);
    enter("b", -1);
    enter("c", -0.0L);
    enter("d", -std::numeric_limits<real>::infinity());
    enter("e", std::numeric_limits<real>::quiet_NaN());
    layout_.printOrderColumn = false;
    numbers_ = {7, 1};
    EXPECT_EQ(header(), "#  TIME a b c d e\n");
    EXPECT_EQ(row(RowFlag::Clear),
              " 0.0e+00  1.0e+00 -1.0e+00  -0.0e+00    -inf"
              "      nan\n");
}

TEST_F(ResultTableTest, NeverPadsTheTimeNorTheStep) {
    enter("a", 1);
    numbers_ = {12, 2};
    calculus_.limits.useAllTerms = true;
    calculus_.time = -2;
    EXPECT_EQ(header(), "# ORDER TIME a log(|DY(max)|)     log(|DY(max)|)    h\n");
    EXPECT_EQ(row(RowFlag::Clear), "  0  -2.00e+00      1.00e+00 0 0 1.00e-01\n");
}

TEST_F(ResultTableTest, WithTheFlagSetWritesNothing) {
    enter("a", 1);
    EXPECT_EQ(row(RowFlag::Set), "");
}

TEST_F(ResultTableTest, LeavesOutWhatIsNotSelectedAndNamesWithPercent) {
    enter("%0", 1);
    enter("a", 2);
    enter("a%1", 3);
    enter("b", 4, false);
    numbers_ = {0, 0};
    EXPECT_EQ(header(), "# ORDER TIME a\n");
    EXPECT_EQ(row(RowFlag::Clear), "  0  0e+00  2e+00\n");
    layout_.printTempEquations = true;
    EXPECT_EQ(header(), "# ORDER TIME %0 a a%1\n");
    EXPECT_EQ(row(RowFlag::Clear), "  0  0e+00  1e+00  2e+00  3e+00\n");
}

TEST_F(ResultTableTest, AsAMatrixStartsItsHeaderWithTheByteA0) {
    enter("%0", 1);
    enter("a", 2);
    enter("b", 1e-7L);
    enter("c", 1234567);
    layout_.points3D = 2;
    EXPECT_EQ(header(), "#\xA0 a b\n# c\n");
    EXPECT_EQ(row(RowFlag::Clear), "");
    EXPECT_EQ(row(RowFlag::Set), " 2 1e-07\n 1.23457e+06\n");
    layout_.printTempEquations = true;
    EXPECT_EQ(header(), "#\xA0 a b\n# c\n");
    EXPECT_EQ(row(RowFlag::Set), " 1 2\n 1e-07 1.23457e+06\n\n");
}

TEST_F(ResultTableTest, AsAMatrixOfAllPointsNamesTheSameFileInEveryBlock) {
    enter("a", 2);
    layout_.points3D = 1;
    layout_.all3DValues = true;
    layout_.gnuplotOutput = "svg";
    const std::string block = "e\n\nset output 'o000001.svg'\nsplot '-'  matrix with lines\n 2\n\n";
    EXPECT_EQ(row(RowFlag::Clear), block);
    EXPECT_EQ(row(RowFlag::Set), block);
}

}  // namespace
