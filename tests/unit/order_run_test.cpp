// SPDX-License-Identifier: MIT
// The terms that a program makes are those of the nodes, in whatever form they are kept.
#include "series/order_run.hpp"

#include <limits>
#include <map>

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
        run = std::make_unique<OrderRun>(*programs, crew);
        constants = Lanes(programs->constants, *programs);
        varying = LaneSections(programs->varying, *programs);
    }

    /// A point with terms 0 in place; false when one of them is not finite.
    bool begin() {
        run->beginPoint();
        for (SlotIndex i = 0; i < graph.variables; ++i) graph[i].node->BeginStep();
        if (!setStarts()) return false;
        for (SlotIndex slot = graph.variables; slot < graph.size(); ++slot) {
            if (!graph.isLeaf(slot)) continue;
            for (int k = 0; k <= 2; ++k) {
                if (!run->setLeaf(slot, k, termOf(graph[slot].node, k))) return false;
            }
        }
        return run->runConstants(constants, calculus.stepTable);
    }

    bool setStarts() {
        return run->setStarts(graph.variables,
                              [this](SlotIndex i) -> const real& { return graph[i].node->startValue(); });
    }

    bool runOrders(int first, int last) { return run->run(varying, first, last, calculus.stepTable); }

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
    Lanes constants;
    LaneSections varying;
};

/// Every operation, constants, time, an algebraic variable, and zeros of both signs.
const char* const everything =
    "a' = (a - b)*(a + c*b)/(1 + a*a) - t & 1.1;"
    "b' = (-b)/c + a*(b - 2) - (a - (t - b)) & -0.7;"
    "d' = c*d - 0*a & -0;"
    "e' = trunc(a*3)*e + k*k/7 - a*b & 0.3;"
    "c = 3; k = c/9;";

/// Seven systems of that kind with start values of their own, so that blocks of four, two and one lane compute every
/// operation, and every pair of products that follow each other in a sum.
std::string sevenTimes() {
    std::string text = "c = 3; k = c/9;";
    for (int i = 1; i <= 7; ++i) {
        std::string one =
            "aN' = (aN - bN)*(aN + c*bN)/(1 + aN*aN) - t & 1.1/N;"
            "bN' = (-bN)/c + aN*(bN - 2) - (aN - (t - bN)) & -0.7 - N;"
            "dN' = aN*bN + bN*bN + c*dN - 0*aN & -0;"
            "eN' = trunc(aN*3)*eN - aN*aN + k*k/7 - aN*bN & 0.3;"
            "fN' = (aN - bN) - aN*fN - bN*fN + 2*(aN - t)*bN & N;"
            "gN' = aN*gN - bN*gN + aN*fN + bN*fN - (gN - 1)*aN - bN*aN & 1/N;";
        for (std::size_t at = 0; (at = one.find('N', at)) != std::string::npos;) one.replace(at, 1, std::to_string(i));
        text += one;
    }
    return text;
}

TEST_F(Orders, GiveTheTermsOfTheNodes) {
    for (const std::string& text : {std::string(everything), sevenTimes()}) {
        prepare(text);
        ASSERT_TRUE(begin());
        ASSERT_TRUE(runOrders(0, 30));
        EXPECT_FALSE(run->isWide());
        expectTermsOfTheNodes(31);
    }
}

TEST_F(Orders, GiveTheTermsOfTheNodesAsExtendedNumbersToo) {
    prepare(sevenTimes() + "z' = z & 1e-200*1e-200;");
    ASSERT_TRUE(begin());
    EXPECT_TRUE(run->isWide());
    ASSERT_TRUE(runOrders(0, 30));
    expectTermsOfTheNodes(31);
}

TEST_F(Orders, RunInBlocksOfFourTwoAndOneLanes) {
    prepare(sevenTimes());
    std::map<std::uint32_t, std::uint32_t> chains;
    for (const Lanes::Run& each : varying.sections[0].runs) chains[each.lanes] += each.blocks * each.lanes;
    EXPECT_GE(chains[4], 24u);
    EXPECT_GE(chains[2], 12u);
    EXPECT_GE(chains[1], 6u);
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

TEST_F(Orders, AddProductsFromTheNewestTermOfTheLeftFactor) {
    // Terms of x: -1, 1, 1; of y: 2^64, 1, 2^64. Term 2 of x*y is ((0 + 2^64) + 1) - 2^64 = 0, where the 1 is lost to
    // rounding to even, and that of y*x is ((0 - 2^64) + 1) + 2^64 = 1.
    calculus.changeStep(1);
    const std::string big = "65536*65536*65536*65536";
    prepare("x' = 1 + 2*t & -1; y' = 1 + " + big + "*2*t & " + big + "; p' = x*y & 0; q' = y*x & 0;");
    ASSERT_TRUE(begin());
    ASSERT_TRUE(runOrders(0, 2));
    ASSERT_EQ(run->term(3, 2), 18446744073709551616.0L);
    EXPECT_EQ(run->term(0, 3), 0);
    EXPECT_EQ(run->term(1, 3), real{1} / 3);
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
    prepare("y' = c - y*c & 1; c = 1e-300*1e-50;");
    EXPECT_TRUE(begin());
    EXPECT_TRUE(run->isWide());
    ASSERT_TRUE(runOrders(0, 9));
    expectTermsOfTheNodes(10);
    prepare("y' = c/(3*d) - y*c & 1; c = 1e-200; d = 1e-200;");
    EXPECT_TRUE(begin());
    EXPECT_FALSE(run->isWide());
    prepare("y' = (c/3)*d - y*c & 1; c = 1e-200; d = 1e-200;");
    EXPECT_TRUE(begin());
    EXPECT_TRUE(run->isWide()) << "for a constant";
    ASSERT_TRUE(runOrders(0, 9));
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
    system.equations.find("y")->setInitialValue(1e3000L);
    ASSERT_TRUE(setStarts());
    EXPECT_FALSE(runOrders(0, 0));
    for (const real none : {std::numeric_limits<real>::infinity(), std::numeric_limits<real>::quiet_NaN()}) {
        system.equations.find("y")->setInitialValue(none);
        EXPECT_FALSE(setStarts());
        EXPECT_FALSE(run->setLeaf(2, 0, none));
    }
}

TEST_F(Orders, TellConstantsThatAreNotFinite) {
    prepare("y' = y*(c/d) & 1; c = 1; d = 0;");
    EXPECT_FALSE(begin());
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
