// SPDX-License-Identifier: MIT
// The terms that a program makes are those of the nodes, in whatever form they are kept.
#include "series/order_run.hpp"

#include <limits>

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Orders : public NodeTest {
protected:
    void prepare(const std::string& text) {
        limits.maxOrder = 1000;
        limits.simplifySmall = false;
        prepareText(*this, text);
        // Algebraic variables have values from the first point on.
        for (Differential& variable : system.equations) valueOf(&variable);
        nextStep();
        graph = TermGraph(system.equations);
        programs = std::make_unique<Programs>(graph);
        run = std::make_unique<OrderRun>(graph.slots.size(), graph.variables, programs->arrays, crew);
    }

    /// A point with terms 0 in place; false when one of them is not finite.
    bool begin() {
        run->beginPoint();
        for (SlotIndex i = 0; i < graph.variables; ++i) {
            graph[i].node->BeginStep();
            if (!run->setStart(i, programs->arrayOf[i], graph[i].node->startValue())) return false;
        }
        return true;
    }

    /// Orders `first` to `last`, the first three by themselves, with the leaves of each.
    bool runOrders(int first, int last) {
        for (int k = first; k <= last && k < 3; ++k) {
            std::vector<SlotIndex> constants;
            for (SlotIndex slot = graph.variables; slot < graph.size(); ++slot) {
                if (graph[slot].isConstant) constants.push_back(slot);
                if (graph.isLeaf(slot) && !run->setNow(slot, termOf(graph[slot].node, k))) return false;
            }
            if (k < 2 && !run->run(programs->constants, k, k, calculus.stepTable)) return false;
            if (k == 0) run->keepConstants(constants);
            if (!run->run(programs->varying, k, k, calculus.stepTable)) return false;
        }
        const int rest = std::max(first, 3);
        return rest > last || run->run(programs->varying, rest, last, calculus.stepTable);
    }

    void expectTermsOfTheNodes(int last) {
        for (SlotIndex i = 0; i < graph.variables; ++i) {
            for (int k = 0; k <= last; ++k) {
                ASSERT_TRUE(sameValue(run->term(i, k), termOf(graph[i].node, k))) << "variable " << i << " term " << k;
            }
        }
    }

    TermGraph graph;
    std::unique_ptr<Programs> programs;
    Crew crew{ThreadOptions()};
    std::unique_ptr<OrderRun> run;
};

/// Every operation, constants, time, an algebraic variable, and zeros of both signs.
const char* const everything =
    "a' = (a - b)*(a + c*b)/(1 + a*a) - t & 1.1;"
    "b' = (-b)/c + a*(b - 2) - (a - (t - b)) & -0.7;"
    "d' = c*d - 0*a & -0;"
    "e' = trunc(a*3)*e + k*k/7 - a*b & 0.3;"
    "c = 3; k = c/9;";

TEST_F(Orders, GiveTheTermsOfTheNodes) {
    prepare(everything);
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 30));
    EXPECT_FALSE(run->isWide());
    expectTermsOfTheNodes(31);
}

TEST_F(Orders, GiveTheSameTermsOneByOne) {
    prepare(everything);
    ASSERT_TRUE(begin());
    for (int k = 0; k <= 30; ++k) ASSERT_TRUE(runOrders(k, k));
    expectTermsOfTheNodes(31);
}

TEST_F(Orders, ScaleByConstants) {
    // Terms 2 (3/2)^k / k!.
    calculus.changeStep(0.5L);
    prepare("y' = 3*y & 2;");
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 2));
    EXPECT_EQ(run->term(0, 0), 2);
    EXPECT_EQ(run->term(0, 1), 3);
    EXPECT_EQ(run->term(0, 2), 2.25L);
    EXPECT_EQ(run->term(0, 3), 6.75L * (0.5L / 3));
}

TEST_F(Orders, SumOverArrays) {
    // y = 1/(1 - t): terms h^k.
    calculus.changeStep(0.25L);
    prepare("y' = y*y & 1;");
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 3));
    EXPECT_EQ(run->term(0, 1), 0.25L);
    EXPECT_EQ(run->term(0, 2), 0.0625L);
    EXPECT_TRUE(isNear(run->term(0, 4), 0.00390625L, 1e-21L));
}

TEST_F(Orders, GoOnWithExtendedNumbersFromTheOrderWhereAPairCannotHoldATerm) {
    // Terms 1e-120^k / k!: the lowest bit of 5e-241 is a normal double, that of 1.7e-361 is none.
    calculus.changeStep(1);
    prepare("y' = 1e-120*y & 1; z' = y*z - z & 2;");
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 1));
    EXPECT_FALSE(run->isWide());
    ASSERT_TRUE(runOrders(2, 2));
    EXPECT_TRUE(run->isWide());
    ASSERT_TRUE(runOrders(3, 30));
    // The factor is the nearest double.
    EXPECT_TRUE(isNear(run->term(0, 3) * 6e180L * 1e180L, 1, 4e-16L));
    expectTermsOfTheNodes(31);
}

TEST_F(Orders, GoOnFromWithinARunOfManyOrders) {
    calculus.changeStep(1);
    prepare("y' = 1e-30*y & 1; z' = (y + z)*z & 0.2;");
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 40));
    EXPECT_TRUE(run->isWide());
    expectTermsOfTheNodes(41);
}

TEST_F(Orders, BeginWithExtendedNumbersForAStartValueOrALeafThatAPairCannotHold) {
    prepare("y' = -y*y & 1e-200*1e-200;");
    EXPECT_TRUE(begin());
    EXPECT_TRUE(run->isWide());
    ASSERT_TRUE(runOrders(0, 9));
    expectTermsOfTheNodes(10);
    prepare("y' = c - y*c & 1; c = 1e-300*1e-100;");
    EXPECT_TRUE(begin());
    EXPECT_FALSE(run->isWide());
    system.equations.find("c")->setInitialValue(1e-400L);
    ASSERT_TRUE(runOrders(0, 9));
    EXPECT_TRUE(run->isWide());
    expectTermsOfTheNodes(10);
}

TEST_F(Orders, BeginThePointAfterAFailureWithExtendedNumbersAndTryPairsAtTheSecond) {
    prepare("y' = -y & 1e-200*1e-200;");
    EXPECT_TRUE(begin());
    EXPECT_TRUE(run->isWide());
    system.equations.find("y")->setInitialValue(1);
    nextStep();
    EXPECT_TRUE(begin());
    EXPECT_TRUE(run->isWide());
    nextStep();
    EXPECT_TRUE(begin());
    EXPECT_FALSE(run->isWide());
    ASSERT_TRUE(runOrders(0, 9));
    expectTermsOfTheNodes(10);
}

TEST_F(Orders, TellTermsThatAreNotFinite) {
    prepare("y' = y*y & 1; z' = 0 & 1;");
    ASSERT_TRUE(begin());
    EXPECT_TRUE(run->setStart(0, programs->arrayOf[0], 1e3000L));
    EXPECT_FALSE(runOrders(0, 0));
    EXPECT_FALSE(run->setStart(1, programs->arrayOf[1], std::numeric_limits<real>::infinity()));
    EXPECT_FALSE(run->setNow(2, std::numeric_limits<real>::quiet_NaN()));
}

TEST_F(Orders, TellAQuotientByZero) {
    prepare("y' = 1/(y - 1) & 1;");
    ASSERT_TRUE(begin());
    EXPECT_FALSE(runOrders(0, 0));
}

TEST_F(Orders, HaveRoomForAsManyTermsAsComeInEitherForm) {
    // The second system leaves the pairs at once.
    for (const char* const text :
         {"y' = y*z - 1/z & 1; z' = y & 2;", "y' = y*z - 1/z & 1; z' = y & 2; w' = w & 1e-200*1e-200;"}) {
        calculus.changeStep(0.5L);
        prepare(text);
        ASSERT_TRUE(begin());
        ASSERT_TRUE(runOrders(0, 20));
        ASSERT_TRUE(runOrders(21, 50));
        ASSERT_TRUE(runOrders(51, 300));
        EXPECT_EQ(run->isWide(), graph.variables == 3);
        expectTermsOfTheNodes(301);
    }
}

TEST_F(Orders, AddTermsToASumUntilItEnds) {
    calculus.changeStep(0.125L);
    prepare("y' = -y & 1; z' = y & 0;");
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 30));
    limits.maxOrder = 20;
    SeriesSum sum;
    sum.begin(1, calculus);
    run->addTerms(sum, 0, 1, 3, calculus);
    EXPECT_EQ(sum.k, 4);
    EXPECT_EQ(sum.sum, ((1 + run->term(0, 1)) + run->term(0, 2)) + run->term(0, 3));
    run->addTerms(sum, 0, 4, 31, calculus);
    EXPECT_EQ(sum.negligible, limits.zeroTerms);
    EXPECT_TRUE(isNear(sum.sum, std::exp(-0.125L), 1e-14L));
}

}  // namespace
