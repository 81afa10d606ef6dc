// SPDX-License-Identifier: MIT
// Random systems give the same bits whether a program or the nodes sum the series.
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "classic/taylor_step.hpp"
#include "tests/unit/fixture.hpp"

using namespace zirk;

namespace {

class RandomText {
public:
    explicit RandomText(unsigned seed) : random_(seed) {}

    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    std::string system() {
        std::string text;
        for (int i = 0; i < 4; ++i) {
            const std::string order = below(4) == 0 ? "''" : "'";
            text += "y" + std::to_string(i) + order + " = " + formula(3) + " & " + start() + ";\n";
        }
        for (int i = 0; i < 2; ++i) text += "x" + std::to_string(i) + " = " + formula(2) + ";\n";
        return text;
    }

private:
    std::string start() {
        static const char* const starts[] = {"0", "1", "-1", "0.5", "2", "-0", "1e-3", "1/0", "0/0", "1e300"};
        // What is not finite is rare: it ends everything that it touches.
        return starts[below(30) == 0 ? below(10) : below(7)];
    }

    std::string leaf() {
        static const char* const constants[] = {"1", "2", "-0.5", "0", "3.7", "1e-3", "pi"};
        switch (below(6)) {
            case 0:
                return "t";
            case 1:
                return constants[below(7)];
            case 2:
                return "x" + std::to_string(below(2));
            default:
                return "y" + std::to_string(below(4));
        }
    }

    std::string formula(int depth) {
        static const char* const functions[] = {"sin", "exp", "tanh", "atan", "sqrt", "trunc", "cos"};
        if (depth == 0 || below(5) == 0) return leaf();
        const int choice = below(10);
        if (choice == 0) return "(-" + formula(depth - 1) + ")";
        if (choice == 1) return std::string(functions[below(7)]) + "(" + leaf() + ")";
        return "(" + formula(depth - 1) + "+-**/"[below(5)] + formula(depth - 1) + ")";
    }

    std::mt19937 random_;
};

/// All that a point shows of a variable: value, terms, stamps and orders.
struct Shown {
    std::string name;
    std::vector<real> numbers;
    std::vector<int> counts;
};

bool sameBits(const std::vector<real>& a, const std::vector<real>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        // Ten bytes hold the number; the rest is padding.
        if (std::memcmp(&a[i], &b[i], 10) != 0) return false;
    }
    return true;
}

struct Limits {
    int order;
    int zeroTerms;
    real accuracy;
    bool allTerms;
    bool simplify;
};

/// Every variable at each of fourteen points, one of them repeated with half the step; empty when the system is no
/// good.
std::vector<Shown> solved(const std::string& text, const Limits& limits, Evaluation evaluation) {
    Workbench bench;
    bench.limits.zeroTerms = limits.zeroTerms;
    bench.limits.setOrder(limits.order);
    bench.limits.accuracy = limits.accuracy;
    bench.limits.useAllTerms = limits.allTerms;
    bench.limits.simplifySmall = limits.simplify;
    bench.limits.steadyStop = 1;
    Calculus& calculus = bench.calculus;
    std::vector<Shown> shown;
    try {
        prepareText(bench, text);
    } catch (const ParseError& error) {
        ADD_FAILURE() << error.text() << text;
    } catch (const Error&) {
        return shown;
    }
    const std::vector<Differential*>& variables = bench.system.equations.list();
    TaylorStep step(calculus, bench.system.equations, evaluation);
    for (int point = 0; point < 14; ++point) {
        step.evaluate();
        for (std::size_t i = 0; i < variables.size(); ++i) {
            const Differential& variable = *variables[i];
            const int highest = step.highestTerm(i);
            Shown now{variable.name(), {variable.startValue(), variable.result()}, {}};
            for (int k = 0; k <= highest; ++k) now.numbers.push_back(step.term(i, k));
            now.counts = {variable.termStamp(), variable.resultStamp(),   highest,
                          variable.ownOrder(),  variable.onlyZeroTerms(), variable.isSteady(),
                          calculus.orderUsed,   step.steadyCount()};
            shown.push_back(now);
        }
        if (point == 8) {
            step.repeat();
            calculus.changeStep(calculus.step / 2);
        } else {
            step.accept();
            calculus.time = calculus.time + calculus.step;
        }
    }
    return shown;
}

void expectSameBits(const std::string& text, const Limits& limits, std::size_t& compared) {
    const std::vector<Shown> plain = solved(text, limits, Evaluation::NodeByNode);
    const std::vector<Shown> fast = solved(text, limits, Evaluation::Compiled);
    ASSERT_EQ(plain.size(), fast.size()) << text;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        ASSERT_EQ(plain[i].counts, fast[i].counts) << plain[i].name << '\n' << text;
        ASSERT_TRUE(sameBits(plain[i].numbers, fast[i].numbers)) << plain[i].name << '\n' << text;
        compared += plain[i].numbers.size();
    }
}

TEST(Chooser, GivesTheBitsOfTheNodesWhereTwoDoublesCannotHoldATerm) {
    // Start values, late terms, kept values, constants and present terms that are too small or too large, and zeros of
    // both signs.
    static const char* const systems[] = {
        "y' = -y & 1e-290; z' = y*z + w & 1e290; w' = z - y & 1;",
        "y' = -y & 1e-300*1e-300; z'' = -z & 1;",
        "y' = y*z*1e200 & 1e150; z' = -z*z & 1e-180;",
        "y' = c*y + d & 1; c = 1e-300*1e-100; d = 1e300*1e300; z' = (y + z)/(y*y) - (y + z) & 2;",
        "y'' = -y & 0; z' = -y*y - 0*z & -0; w' = -z & 0;",
        "y' = 1e-310*y & 1; z' = (y*1e-200)*(z*1e-200) + trunc(y*1e-200) & 3;",
        "y' = (y - z)*1e-250 + (y - z)*1e250 & 1e-50; z' = 1/(y - z) & 2e-50;"};
    std::size_t compared = 0;
    for (const char* const text : systems) {
        for (const int order : {5, 30, 70}) {
            expectSameBits(text, {order, 4, 1e-10L, false, false}, compared);
            expectSameBits(text, {order, 3, 1e-18L, true, false}, compared);
        }
    }
    EXPECT_GT(compared, 20000u);
}

TEST(Chooser, GivesTheBitsOfTheNodesOnRandomSystems) {
    std::size_t compared = 0;
    for (unsigned seed = 1; seed <= 250; ++seed) {
        RandomText random(seed);
        const std::string text = random.system();
        const Limits limits{random.below(4) == 0 ? 1 + random.below(60) : 30, 1 + random.below(5),
                            random.below(3) == 0 ? 1e-15L : 1e-10L, random.below(5) == 0, random.below(4) != 0};
        SCOPED_TRACE(seed);
        expectSameBits(text, limits, compared);
    }
    EXPECT_GT(compared, 200000u);
}

}  // namespace
