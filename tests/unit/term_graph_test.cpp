// SPDX-License-Identifier: MIT
// What the fast way knows of a system: which terms are the same, who is made from whom, and who is asked for how much.
#include "series/term_graph.hpp"

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
    std::pair<int, int> variables(const std::string& text) {
        const TermGraph& graph = of(text);
        const std::vector<int> first = congruentSlots(graph);
        int different = 0;
        for (int i = 0; i < graph.variables; ++i) different += first[static_cast<std::size_t>(i)] == i ? 1 : 0;
        return {different, graph.variables};
    }

private:
    std::unique_ptr<TermGraph> graph_;
};

using Count = std::pair<int, int>;

TEST_F(Graph, SharesEqualValuesOnce) {
    // Variables x, y; then 2, 2*x, (2*x)*y and 3: the second 2*x and the second 2 are the first ones.
    const TermGraph& graph = of("x' = 2*x*y & 1; y' = 3 - 2*x*y & 2;");
    const std::vector<int> first = congruentSlots(graph);
    int different = 0;
    for (int i = 0; i < graph.size(); ++i) different += first[static_cast<std::size_t>(i)] == i ? 1 : 0;
    EXPECT_EQ(different, 2 + 3 + 2);
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
    std::vector<int> itself;
    for (int i = 0; i < graph.size(); ++i) itself.push_back(i);
    const std::vector<int> component = components(graph, itself);
    EXPECT_EQ(component[0], component[1]);
    EXPECT_GT(component[2], component[0]);
    EXPECT_NE(component[3], component[0]);
    EXPECT_NE(component[3], component[2]);
}

TEST_F(Graph, SpreadsTheHighestTermOneStepAtATime) {
    const TermGraph& graph = of("a' = b & 1; b' = c & 2; c' = d & 3; d' = 5 & 4;");
    std::vector<int> highest{9, 2, 7, 3};
    HighestTerms(graph).spread(highest);
    // a asks b for 8, b asks c for 7 which it has, c asks d for 6.
    EXPECT_EQ(highest, (std::vector<int>{9, 8, 7, 6}));
}

TEST_F(Graph, LeavesHighestTermsThatDifferByOne) {
    const TermGraph& graph = of("a' = b & 1; b' = a & 2;");
    std::vector<int> highest{4, 5};
    HighestTerms(graph).spread(highest);
    EXPECT_EQ(highest, (std::vector<int>{4, 5}));
}

}  // namespace
