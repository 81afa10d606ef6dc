// SPDX-License-Identifier: MIT
// Formulas that are written alike are one node; constants fold with 64 bits, and only exact 0 and 1 simplify.
#include <gtest/gtest.h>

#include <cmath>

#include "formula/graph.hpp"

using namespace zirk;

namespace {

class FormulaGraphs : public ::testing::Test {
protected:
    FormulaGraph graph;
    const NodeIndex x = graph.variable(0);
    const NodeIndex y = graph.variable(1);
    const NodeIndex zero = graph.number(0);
    const NodeIndex one = graph.number(1);

    real folded(NodeIndex node) const {
        EXPECT_TRUE(graph.isNumber(node));
        return graph[node].number;
    }
};

TEST_F(FormulaGraphs, HoldsEqualFormulasOnce) {
    EXPECT_EQ(graph.variable(0), x);
    EXPECT_NE(x, y);
    EXPECT_EQ(graph.time(), graph.time());
    EXPECT_EQ(graph.number(0.1L), graph.number(0.1L));
    const NodeIndex once = graph.apply(ExprType::Sin, graph.multiply(x, graph.subtract(x, y)));
    const NodeIndex size = graph.size();
    EXPECT_EQ(graph.apply(ExprType::Sin, graph.multiply(x, graph.subtract(x, y))), once);
    EXPECT_EQ(graph.size(), size);
}

TEST_F(FormulaGraphs, TakesSumsAndProductsInEitherOrder) {
    EXPECT_EQ(graph.add(x, y), graph.add(y, x));
    EXPECT_EQ(graph.multiply(x, y), graph.multiply(y, x));
    EXPECT_NE(graph.subtract(x, y), graph.subtract(y, x));
    EXPECT_NE(graph.divide(x, y), graph.divide(y, x));
    EXPECT_NE(graph.power(x, y), graph.power(y, x));
}

TEST_F(FormulaGraphs, TellsNumbersApartByTheirLastBit) {
    const real a = 0.1L;
    EXPECT_NE(graph.number(a), graph.number(std::nextafter(a, real{1})));
    EXPECT_NE(graph.number(a), graph.number(static_cast<double>(a)));
    EXPECT_NE(graph.number(0), graph.number(-0.0L));
}

TEST_F(FormulaGraphs, MakesOperandsBeforeWhatIsMadeFromThem) {
    graph.divide(graph.add(y, graph.power(x, graph.number(3))), graph.negate(graph.multiply(y, x)));
    for (NodeIndex i = 0; i < graph.size(); ++i) {
        if (graph[i].operation == Operation::Variable) continue;
        for (const NodeIndex operand : {graph[i].left, graph[i].right}) {
            EXPECT_TRUE(operand == FormulaGraph::none || operand < i);
        }
    }
}

TEST_F(FormulaGraphs, SimplifiesExactZerosAndOnes) {
    EXPECT_EQ(graph.add(x, zero), x);
    EXPECT_EQ(graph.add(zero, x), x);
    EXPECT_EQ(graph.subtract(x, zero), x);
    EXPECT_EQ(graph.subtract(zero, x), graph.negate(x));
    EXPECT_EQ(graph.multiply(x, zero), zero);
    EXPECT_EQ(graph.multiply(zero, x), zero);
    EXPECT_EQ(graph.multiply(one, x), x);
    EXPECT_EQ(graph.multiply(x, one), x);
    EXPECT_EQ(graph.divide(zero, x), zero);
    EXPECT_EQ(graph.divide(x, one), x);
    EXPECT_EQ(graph.power(x, zero), one);
    EXPECT_EQ(graph.power(x, one), x);
    EXPECT_EQ(graph.negate(graph.negate(x)), x);
}

TEST_F(FormulaGraphs, SimplifiesNothingElse) {
    EXPECT_FALSE(graph.isNumber(graph.subtract(x, x)));
    EXPECT_FALSE(graph.isNumber(graph.divide(x, x)));
    EXPECT_NE(graph.add(x, graph.number(1e-4000L)), x);
    EXPECT_NE(graph.multiply(x, graph.number(1 + 0x1p-63L)), x);
    EXPECT_NE(graph.divide(zero, zero), zero);
    EXPECT_FALSE(graph.isNumber(graph.power(one, x)));
}

TEST_F(FormulaGraphs, FoldsConstantsWithAllBits) {
    EXPECT_EQ(folded(graph.add(one, graph.number(0x1p-63L))), 1 + 0x1p-63L);
    EXPECT_EQ(folded(graph.divide(one, graph.number(3))), 1.0L / 3);
    EXPECT_EQ(folded(graph.multiply(graph.number(0.1L), graph.number(0.1L))), 0.1L * 0.1L);
    EXPECT_EQ(folded(graph.power(graph.number(2), graph.number(-3))), 0.125L);
    EXPECT_EQ(folded(graph.negate(graph.number(0.1L))), -0.1L);
    // sqrt 2 with 25 digits.
    EXPECT_EQ(folded(graph.apply(ExprType::Sqrt, graph.number(2))), 1.414213562373095048801689L);
    EXPECT_TRUE(std::isnan(folded(graph.divide(zero, zero))));
}

TEST_F(FormulaGraphs, IsImportedWithAllThatAFormulaNeedsAndNoMore) {
    const NodeIndex shared = graph.apply(ExprType::Exp, x);
    const NodeIndex formula = graph.add(graph.multiply(shared, y), graph.divide(shared, graph.time()));
    graph.apply(ExprType::Cos, y);
    FormulaGraph other;
    FormulaImport import(graph, other);
    const NodeIndex copy = import(formula);
    EXPECT_EQ(other.size(), 7u) << "x, y, t, exp(x), a product, a quotient, a sum";
    EXPECT_EQ(import(formula), copy);
    const NodeIndex exponential = other.apply(ExprType::Exp, other.variable(0));
    EXPECT_EQ(other.add(other.multiply(exponential, other.variable(1)), other.divide(exponential, other.time())), copy);
    EXPECT_EQ(other.size(), 7u);
}

TEST_F(FormulaGraphs, IsImportedHoweverDeepItIs) {
    NodeIndex deep = x;
    for (int i = 0; i < 300000; ++i) deep = graph.apply(ExprType::Sin, deep);
    FormulaGraph other;
    FormulaImport import(graph, other);
    EXPECT_EQ(import(deep), 300000u);
}

}  // namespace
