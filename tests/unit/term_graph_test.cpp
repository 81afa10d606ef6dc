// SPDX-License-Identifier: MIT
// What the fast way knows of a system: which terms are the same, who is made from whom, and who is asked for how much.
#include "series/term_graph.hpp"

#include "series/congruence.hpp"
#include "series/highest_terms.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class Graph : public NodeTest {
protected:
    const TermGraph& of(const std::string& text) {
        prepareText(*this, text);
        graph_ = std::make_unique<TermGraph>(system.equations);
        return *graph_;
    }

    /// Number of different variables, of all that the prepared system has.
    std::pair<SlotIndex, SlotIndex> variables(const std::string& text) {
        const TermGraph& graph = of(text);
        return {DistinctTerms(graph).graph.variables, graph.variables};
    }

private:
    std::unique_ptr<TermGraph> graph_;
};

using Count = std::pair<SlotIndex, SlotIndex>;

TEST_F(Graph, SharesEqualValuesOnce) {
    // Variables x, y; then 2, 2*x, (2*x)*y and 3: the second 2*x and the second 2 are the first ones.
    const DistinctTerms terms(of("x' = 2*x*y & 1; y' = 3 - 2*x*y & 2;"));
    // Then 3 - (2*x)*y.
    ASSERT_EQ(terms.graph.size(), 2u + 4u + 1u);
    EXPECT_EQ(terms.graph[6].type, ExprType::Minus);
    EXPECT_EQ(terms.graph[6].right, terms.graph[0].left);
}

TEST_F(Graph, RepresentsASlotByTheFirstOneWithItsTerms) {
    // Slots a, b, c, then -a, -b, -c; a and c are the same.
    const TermGraph& graph = of("a' = -a & 1; b' = -b & 2; c' = -c & 1;");
    EXPECT_EQ(firstCongruent(graph), (std::vector<SlotIndex>{0, 1, 0, 3, 4, 3}));
    const DistinctTerms terms(graph);
    EXPECT_EQ(terms.representative, (std::vector<SlotIndex>{0, 1, 0, 2, 3, 2}));
    ASSERT_EQ(terms.graph.size(), 4u);
    EXPECT_EQ(terms.graph.variables, 2u);
    EXPECT_EQ(terms.graph[1].left, 3u);
    EXPECT_EQ(terms.graph[3].left, 1u);
}

TEST_F(Graph, TakesTheOrderOfFactorsAsADifference) {
    EXPECT_EQ(variables("a' = a*b & 1; b' = b & 1; c' = b*a & 1;"), Count(3, 3));
}

TEST_F(Graph, FindsCongruentVariables) {
    EXPECT_EQ(variables("a' = b & 1; b' = a & 2; c' = d & 1; d' = c & 2;"), Count(2, 4));
}

TEST_F(Graph, TellsVariablesApartByStartValues) { EXPECT_EQ(variables("a' = -a & 1; b' = -b & 2;"), Count(2, 2)); }

TEST_F(Graph, TellsVariablesApartByTheSignOfZero) { EXPECT_EQ(variables("a' = -a & 0; b' = -b & -0;"), Count(2, 2)); }

TEST_F(Graph, TellsVariablesApartByWhatTheyAreMadeFromFarAway) {
    EXPECT_EQ(variables("a' = b & 1; b' = c & 1; c' = 5 & 1; p' = q & 1; q' = r & 1; r' = 6 & 1;"), Count(6, 6));
}

TEST_F(Graph, FindsCongruentChains) {
    EXPECT_EQ(variables("a' = b & 1; b' = c & 1; c' = 5 & 1; p' = q & 1; q' = r & 1; r' = 5 & 1;"), Count(3, 6));
}

TEST_F(Graph, NeverMixesTimeNodes) { EXPECT_EQ(variables("a' = t & 1; b' = t & 1;"), Count(2, 2)); }

TEST_F(Graph, ComputesEveryOccurrenceOfARootOnce) {
    // Both roots make a variable; x and y go on by themselves.
    const Count count = variables("x' = -x/sqrt(x*x + y*y) & 3; y' = -y/sqrt(x*x + y*y) & 4;");
    EXPECT_EQ(count.second - count.first, (count.second - 2) / 2);
    EXPECT_GT(count.second, 2);
}

TEST_F(Graph, NumbersComponentsFromWhatTheyAreMadeFrom) {
    // Variables in the order of their names: a and b make each other, c is made from them, d stands alone.
    const TermGraph& graph = of("a' = b & 1; b' = a & 2; c' = a & 3; d' = d & 4;");
    const std::vector<SlotIndex> component = components(graph);
    EXPECT_EQ(component[0], component[1]);
    EXPECT_GT(component[2], component[0]);
    EXPECT_NE(component[3], component[0]);
    EXPECT_NE(component[3], component[2]);
}

TEST_F(Graph, SpreadsTheHighestTermOneStepAtATime) {
    const TermGraph& graph = of("a' = b & 1; b' = c & 2; c' = d & 3; d' = 5 & 4;");
    // a asks b for 8, b asks c for 7 which it has, c asks d for 6.
    EXPECT_EQ(HighestTerms(graph).spread({9, 2, 7, 3}), (std::vector<int>{9, 8, 7, 6}));
}

TEST_F(Graph, LeavesHighestTermsThatDifferByOne) {
    const TermGraph& graph = of("a' = b & 1; b' = a & 2;");
    EXPECT_EQ(HighestTerms(graph).spread({4, 5}), (std::vector<int>{4, 5}));
}

}  // namespace
