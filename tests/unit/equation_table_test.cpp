// SPDX-License-Identifier: MIT
// The table of variables, its order, and references by name.
#include "lang/equation_table.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "expr/calculus.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

class References : public testing::Test {
protected:
    Differential* enter(const std::string& name, const Expr::Ref& rightHandSide = Expr::Ref()) {
        auto* variable = new Differential(name, rightHandSide, 0);
        equations_.enter(variable);
        return variable;
    }

    Expr::Ref reference(const std::string& name) { return new Equation(name, equations_); }

    std::string names() const {
        std::string all;
        for (const Differential& variable : equations_) all += variable.name() + " ";
        return all;
    }

    SeriesLimits limits_;
    Calculus calculus_{limits_, real{0.1}};
    Calculus::Scope scope_{calculus_};
    EquationTable equations_;
};

TEST_F(References, AreWalkedInTheOrderOfTheirNames) {
    for (const char* name : {"ya", "y1", "y", "y%2", "y%10", "y%1", "_", "Z", "%10", "%2", "y_", "yZ"}) enter(name);
    EXPECT_EQ(names(), "%10 %2 Z _ y y%1 y%10 y%2 y1 yZ y_ ya ");
}

TEST_F(References, AreListedInThatOrderAlsoWhenOneIsEnteredOrReplaced) {
    Differential* const y = enter("y");
    EXPECT_EQ(equations_.list(), std::vector<Differential*>{y});
    Differential* const x = enter("x");
    EXPECT_EQ(equations_.list(), (std::vector<Differential*>{x, y}));
    Differential* const other = enter("y");
    EXPECT_EQ(equations_.list(), (std::vector<Differential*>{x, other}));
}

TEST_F(References, PutDerivativesDirectlyAfterTheirBase) {
    for (const char* name : {"xa", "x%1", "x"}) enter(name);
    EXPECT_EQ(names(), "x x%1 xa ");
}

TEST_F(References, CompareNamesAsUnsignedBytes) {
    for (const char* name : {"y\xe9", "yz", "y"}) enter(name);
    EXPECT_EQ(names(), "y yz y\xe9 ");
}

TEST_F(References, FindTheLatestVariableOfAName) {
    enter("y");
    Differential* later = enter("y");
    EXPECT_EQ(equations_.size(), 1U);
    EXPECT_EQ(equations_.find("y"), later);
    EXPECT_EQ(equations_.find("Y"), nullptr);
}

TEST_F(References, BecomeTheOneVariableThatTheyName) {
    const Expr::Ref before = reference("y");
    Differential* y = enter("y");
    EXPECT_EQ(before->type(), ExprType::Equation);
    EXPECT_EQ(static_cast<int>(before->type()), 10);
    EXPECT_EQ(before->Converted().get(), y);
    EXPECT_EQ(reference("y")->Converted().get(), y);
}

TEST_F(References, PrintTheirNameOnly) {
    std::ostringstream out;
    reference("y%2")->Print(out);
    EXPECT_EQ(out.str(), "y%2");
}

TEST_F(References, TakeNoPartInAStep) {
    const Expr::Ref placeholder = reference("y");
    real value = 5;
    placeholder->GetDY(0, value);
    placeholder->Result(value, true);
    placeholder->MakeDerivative();
    EXPECT_EQ(value, 5);
}

TEST_F(References, ToAnUndefinedNameFail) {
    try {
        reference("y%2")->Converted();
        ADD_FAILURE() << "no failure";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(), "\n#(ERR) Reference to undefined equation \"y%2\"\n");
        EXPECT_EQ(error.status(), 1);
    }
}

TEST_F(References, ByHandleHaveAMessageOfTheirOwn) {
    Differential* y = enter("y");
    Expr::Ref handle;
    equations_.redirect(handle, "y");
    EXPECT_EQ(handle.get(), y);
    try {
        equations_.redirect(handle, "z");
        ADD_FAILURE() << "no failure";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(), "#(ERR) Undefined reference to z equation\n");
        EXPECT_EQ(error.status(), 1);
    }
}

TEST(DerivativeName, IsTheNameAPercentSignAndTheOrder) {
    EXPECT_EQ(derivativeName("y", 0), "y");
    EXPECT_EQ(derivativeName("y", 1), "y%1");
    EXPECT_EQ(derivativeName("a_b", 12), "a_b%12");
}

}  // namespace
