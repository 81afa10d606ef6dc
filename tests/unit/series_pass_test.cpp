// SPDX-License-Identifier: MIT
// One point by the program: what it hands over, to the bit what the nodes would have summed by themselves.
#include "series/series_pass.hpp"

#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

/// A system with its points, summed by a pass or by the nodes.
class Course : public Workbench {
public:
    explicit Course(const std::string& text, real step = 0.1L) {
        calculus.changeStep(step);
        limits.simplifySmall = false;
        prepareText(*this, text);
        // The first point shows what is there and sums nothing.
        sumByNodes();
        nextStep();
    }

    void nextStep() {
        calculus.prevStepStamp = calculus.stepStamp++;
        calculus.time = calculus.time + calculus.step;
    }

    /// False, with nothing summed, when the pass has to leave the point to the nodes.
    bool sumByPass() {
        const Calculus::Scope inForce(calculus);
        calculus.orderUsed = 0;
        if (pass_ == nullptr) pass_ = std::make_unique<SeriesPass>(calculus, system.equations);
        if (!pass_->sumAll()) return false;
        computeAlgebraic();
        return true;
    }

    void sumByNodes() {
        const Calculus::Scope inForce(calculus);
        calculus.orderUsed = 0;
        for (Differential* variable : differentials()) valueOf(variable);
        computeAlgebraic();
    }

    std::vector<Differential*> differentials() const {
        std::vector<Differential*> result;
        for (Differential& variable : system.equations) {
            if (variable.type() == ExprType::Differential) result.push_back(&variable);
        }
        return result;
    }

    const Differential& operator[](const std::string& name) const { return *system.equations.find(name); }
    SeriesPass& pass() { return *pass_; }

private:
    void computeAlgebraic() {
        for (Differential& variable : system.equations) {
            if (variable.type() == ExprType::Algebraic) valueOf(&variable);
        }
    }

    std::unique_ptr<SeriesPass> pass_;
};

void expectSamePoint(Course& nodes, Course& fast) {
    EXPECT_EQ(nodes.calculus.orderUsed, fast.calculus.orderUsed);
    const std::vector<Differential*> expected = nodes.differentials();
    const std::vector<Differential*> variables = fast.differentials();
    ASSERT_EQ(expected.size(), variables.size());
    for (SlotIndex i = 0; i < variables.size(); ++i) {
        SCOPED_TRACE(variables[i]->name());
        EXPECT_TRUE(sameValue(expected[i]->result(), variables[i]->result()));
        EXPECT_EQ(expected[i]->resultStamp(), variables[i]->resultStamp());
        EXPECT_EQ(expected[i]->ownOrder(), variables[i]->ownOrder());
        EXPECT_EQ(expected[i]->onlyZeroTerms(), variables[i]->onlyZeroTerms());
        const int highest = expected[i]->highestTerm();
        ASSERT_EQ(highest, fast.pass().highestTerm(i));
        for (int k = 0; k <= highest; ++k) {
            EXPECT_TRUE(sameValue(expected[i]->term(k), fast.pass().term(i, k))) << "term " << k;
        }
    }
}

/// Ten points; `halvings`: at every third one the step is halved and the point done again from the same base.
void expectSamePoints(const std::string& text, real step = 0.1L) {
    SCOPED_TRACE(text);
    Course nodes(text, step);
    Course fast(text, step);
    for (int point = 0; point < 10; ++point) {
        SCOPED_TRACE(point);
        nodes.sumByNodes();
        ASSERT_TRUE(fast.sumByPass());
        expectSamePoint(nodes, fast);
        if (::testing::Test::HasFailure()) return;
        nodes.nextStep();
        fast.nextStep();
        if (point % 3 != 2) continue;
        for (Course* course : {&nodes, &fast}) {
            // As for a point that was rejected.
            course->calculus.prevStepStamp = course->calculus.stepStamp;
            course->calculus.changeStep(course->calculus.step / 2);
        }
    }
}

TEST(Pass, SumsAParabolaExactly) {
    // x = 20 h - 5 h^2 with h = 1/2. The sums end after four zeros: that of v has terms 0 to 5, that of x 0 to 6.
    Course course("x' = v & 0; v' = -10 & 20;", 0.5L);
    ASSERT_TRUE(course.sumByPass());
    EXPECT_EQ(course["x"].result(), 8.75L);
    EXPECT_EQ(course["v"].result(), 15);
    EXPECT_EQ(course["x"].ownOrder(), 3);
    EXPECT_EQ(course["v"].ownOrder(), 2);
    EXPECT_EQ(course.calculus.orderUsed, 3);
    // In the order of names.
    EXPECT_EQ(course.pass().highestTerm(0), 5);
    EXPECT_EQ(course.pass().highestTerm(1), 6);
    EXPECT_EQ(course.pass().term(1, 1), 10);
    EXPECT_EQ(course.pass().term(1, 2), -1.25L);
}

TEST(Pass, GivesThePointsOfTheNodes) {
    expectSamePoints("x'' = -x/(x*x + y*y) & 1; y'' = -y/(x*x + y*y) & 0; x'(0) = 0; y'(0) = 0.8;");
    expectSamePoints("a' = sin(b)*exp(-a) & 0.3; b' = sqrt(a + b) - trunc(a*2) & 2;");
}

TEST(Pass, SumsCongruentVariablesOnce) {
    const std::string text = "a' = -a*b & 1; b' = a & 2; p' = -p*q & 1; q' = p & 2; r' = -r*q & 1; s' = r & 2;";
    expectSamePoints(text);
    Course course(text);
    ASSERT_TRUE(course.sumByPass());
    for (int k = 0; k < 9; ++k) EXPECT_TRUE(sameValue(course.pass().term(0, k), course.pass().term(2, k)));
}

TEST(Pass, GoesOnWithVariablesThatOthersNeed) {
    // The sum of a ends long before that of b, which needs its terms; c stands alone and ends at once.
    const std::string text = "a' = 1e-4*a & 1; b' = 20*b*a & 1; c' = 0 & 1;";
    expectSamePoints(text);
    Course course(text);
    ASSERT_TRUE(course.sumByPass());
    EXPECT_LT(course["a"].ownOrder(), 5);
    EXPECT_GT(course["b"].ownOrder(), 10);
    EXPECT_EQ(course.pass().highestTerm(0), course.pass().highestTerm(1) - 1) << "b has asked a for one less";
    EXPECT_EQ(course.pass().highestTerm(2), 4);
}

TEST(Pass, SeesNewLeavesAtEveryPoint) {
    // Time follows the values that somebody asked for, and so does x, constant over a step.
    expectSamePoints("y' = t*y - x & 1; z' = t & 0; x = t + y*y; w' = x & 2;");
}

TEST(Pass, KeepsConstantsApart) {
    expectSamePoints("y' = (g/l)*y - g*(l - 2) & 1; z' = -(g*l) & -0; w' = 0*w & -0; g = 9.81; l = 0.7;");
}

TEST(Pass, SumsWhatPairsOfDoublesCannotHold) {
    expectSamePoints("y' = -y & 1e-290; z' = y*z + w & 1e290; w' = z - y & 1;");
    expectSamePoints("y' = -y*y & 1e-200*1e-200; z'' = -z & 1e200*1e200;");
}

TEST(Pass, SumsOverTermsBeyondTheRoomItBeganWith) {
    Course nodes("y' = y*y - y/(2 - y) & 0.9; z' = y & 0;", 0.9L);
    Course fast("y' = y*y - y/(2 - y) & 0.9; z' = y & 0;", 0.9L);
    for (Course* course : {&nodes, &fast}) {
        course->limits.maxOrder = 200;
        course->limits.useAllTerms = true;
    }
    nodes.sumByNodes();
    ASSERT_TRUE(fast.sumByPass());
    EXPECT_EQ(fast.pass().highestTerm(1), 199);
    expectSamePoint(nodes, fast);
}

TEST(Pass, LeavesVariablesAloneWhenATermIsNotFinite) {
    for (const char* const text : {"y' = 1/(y - 1) & 1; z' = 1 & 5;", "y' = y/c & 1; z' = 1 & 5; c = 0;",
                                   "y' = 1e3000*y*1e3000 & 1e1; z' = 1 & 5;", "y' = y & 1/0; z' = 1 & 5;"}) {
        SCOPED_TRACE(text);
        Course course(text);
        EXPECT_FALSE(course.sumByPass());
        EXPECT_EQ(course.calculus.orderUsed, 0);
        EXPECT_NE(course["z"].resultStamp(), course.calculus.stepStamp);
        EXPECT_EQ(course["z"].result(), 5);
        Course nodes(text);
        nodes.sumByNodes();
        course.sumByNodes();
        EXPECT_TRUE(sameValue(course["y"].result(), nodes["y"].result()));
        EXPECT_TRUE(sameValue(course["z"].result(), nodes["z"].result()));
    }
}

TEST(Pass, SumsAgainAfterAPointThatItLeft) {
    const char* const text = "y' = 1/(y - 1) & 3; z' = 1 & 5;";
    Course nodes(text);
    Course fast(text);
    for (const real start : {3.0L, 1.0L, 2.0L}) {
        for (Course* course : {&nodes, &fast}) course->system.equations.find("y")->setInitialValue(start);
        nodes.sumByNodes();
        const bool isFinite = start != 1;
        EXPECT_EQ(fast.sumByPass(), isFinite);
        if (!isFinite) fast.sumByNodes();
        if (isFinite) expectSamePoint(nodes, fast);
        nodes.nextStep();
        fast.nextStep();
    }
}

TEST(Pass, SumsASystemWithoutVariables) {
    Course course("x = t;");
    EXPECT_TRUE(course.sumByPass());
}

}  // namespace
