// SPDX-License-Identifier: MIT
// Texts of any depth and length: no stack overflows, and the work grows with the length only.
#include "tests/unit/problem_fixture.hpp"

using namespace zirk;

namespace {

constexpr int million = 1000000;
constexpr int many = 200000;

std::string repeated(const std::string& part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += part;
    return text;
}

/// What is explained must read back, too.
void expectReadable(const std::string& text) {
    const std::string explained = Problem::fromText(text).explain();
    EXPECT_EQ(Problem::fromText(explained).explain().size(), explained.size());
}

TEST(ProblemSize, ReadsAMillionBrackets) {
    EXPECT_EQ(Problem::fromText("x' = " + repeated("(", million) + "x" + repeated(")", million) + ";").explain(),
              "x' = x & 0;\n");
}

TEST(ProblemSize, ReadsAMillionTerms) { expectReadable("x' = x" + repeated(" + x*t", million) + ";"); }

TEST(ProblemSize, ReadsFunctionsOneInTheOther) {
    expectReadable("x' = " + repeated("sin(", many) + "x" + repeated(")", many) + ";");
}

TEST(ProblemSize, ReadsATowerOfPowers) { expectReadable("x' = x" + repeated("^x", many) + ";"); }

TEST(ProblemSize, ReadsAMillionSigns) {
    EXPECT_EQ(Problem::fromText("x' = " + repeated("-", million) + "x;").explain(), "x' = x & 0;\n");
}

TEST(ProblemSize, ReadsANestOfProductsAndSums) {
    expectReadable("x' = " + repeated("(1 + t*", many) + "x" + repeated(")", many) + ";");
}

TEST(ProblemSize, ReadsAChainOfDefinitionsFromEitherEnd) {
    constexpr int length = 100000;
    std::string forwards = "d0 = x + t;";
    std::string backwards;
    for (int i = 1; i < length; ++i) {
        const std::string link = "d" + std::to_string(i) + " = d" + std::to_string(i - 1) + " + t;";
        forwards += link;
        backwards.insert(backwards.size(),
                         "d" + std::to_string(length - i) + " = d" + std::to_string(length - i - 1) + " + t;");
    }
    const std::string last = "d" + std::to_string(length - 1);
    const Problem one = Problem::fromText(forwards + "x' = " + last + ";");
    const Problem other = Problem::fromText("x' = " + last + ";" + backwards + "d0 = x + t;");
    EXPECT_EQ(valueOf(one.expression("x'"), 0.5L, {1}), 1 + length * 0.5L);
    EXPECT_EQ(valueOf(other.expression("x'"), 0.5L, {1}), 1 + length * 0.5L);
    EXPECT_EQ(one.explain().size(), other.explain().size());
    EXPECT_EQ(valueOf(one.expression("2*x'"), 0.5L, {1}), 2 + length);
}

TEST(ProblemSize, MakesAMillionDerivatives) {
    const Problem problem = Problem::fromText("x'1000000 = x'999999 + x;");
    EXPECT_EQ(problem.names().size(), 1000000U);
    EXPECT_EQ(problem.names().back(), "x'999999");
}

}  // namespace
