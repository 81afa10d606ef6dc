// SPDX-License-Identifier: MIT
// Random problems: the fast way gives the bits of the plain one, and times inside steps the values of runs that end
// there.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "zirk/integrator.hpp"

using namespace zirk;

namespace {

/// Problems of one to five bounded variables, with every function on its domain.
class RandomProblem {
public:
    explicit RandomProblem(unsigned seed, bool jumps) : random_(seed), jumps_(jumps) {}

    std::string text() {
        variables_ = 1 + below(5);
        definitions_ = below(3);
        std::string text;
        for (int i = 0; i < variables_; ++i) {
            // Held back, so that nothing grows beyond all numbers.
            text += "y" + name(i) + "' = " + formula(3) + " - 2*y" + name(i) + " & " + number() + ";\n";
        }
        for (int i = 0; i < definitions_; ++i)
            text += "d" + name(i) + " = " + leafOfVariables() + "*" + leaf(true) + ";\n";
        return text;
    }

private:
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    static std::string name(int i) { return std::to_string(i); }
    std::string number() {
        static const char* const numbers[] = {"1", "0.5", "-0.3", "2", "1e-3", "0", "pi", "-1.7"};
        return numbers[below(8)];
    }
    std::string leafOfVariables() { return "y" + name(below(variables_)); }
    std::string leaf(bool withoutDefinitions = false) {
        const int choice = below(withoutDefinitions ? 5 : 6);
        if (choice == 0) return "t";
        if (choice == 1) return number();
        if (choice == 5 && definitions_ > 0) return "d" + name(below(definitions_));
        return leafOfVariables();
    }
    /// Between -1 and 1.
    std::string bounded(int depth) {
        static const char* const functions[] = {"sin", "cos", "tanh"};
        return std::string(functions[below(3)]) + "(" + formula(depth - 1) + ")";
    }

    std::string formula(int depth) {
        if (depth <= 0 || below(6) == 0) return leaf();
        const std::string u = bounded(depth);
        switch (below(jumps_ ? 16 : 14)) {
            case 0:
                return "(-" + u + ")";
            case 1:
                return "(" + u + " + " + formula(depth - 2) + ")";
            case 2:
                return "(" + u + " - " + leaf() + ")";
            case 3:
                return "(" + u + "*" + bounded(depth) + ")";
            case 4:
                return "(" + u + "/(2 + " + bounded(depth) + "))";
            case 5:
                return "(3/(1.5 + " + u + "))";
            case 6: {
                static const char* const exponents[] = {"2", "3", "-2", "0.5", "-1.5", "0.3", "5"};
                return "((1.5 + " + u + ")^" + exponents[below(7)] + ")";
            }
            case 7: {
                static const char* const functions[] = {"exp", "sinh", "cosh", "atan", "asinh"};
                return std::string(functions[below(5)]) + "(" + u + ")";
            }
            case 8: {
                static const char* const functions[] = {"sqrt", "ln", "acosh", "argcotanh", "acotan", "cotanh"};
                return std::string(functions[below(6)]) + "(2.5 + " + u + ")";
            }
            case 9: {
                static const char* const functions[] = {"asin", "acos", "atanh", "tan"};
                return std::string(functions[below(4)]) + "(0.7*" + u + ")";
            }
            case 10:
                return "((1.5 + " + u + ")^" + bounded(depth) + ")";
            case 11:
                return "cotan(1.5 + " + u + ")";
            case 12:
            case 13:
                return u;
            case 14:
                return "trunc(3*" + u + ")";
            default:
                return "acotan(" + u + ")";
        }
    }

    std::mt19937 random_;
    bool jumps_;
    int variables_ = 1;
    int definitions_ = 0;
};

void append(std::string& bits, real number) {
    // Ten bytes hold the number; the rest is padding.
    bits.append(reinterpret_cast<const char*>(&number), 10);
}

std::vector<Expression> namesOf(const Problem& problem) {
    std::vector<Expression> all;
    for (const std::string& name : problem.names()) all.push_back(problem.expression(name));
    return all;
}

/// All that a run shows, and how it ends.
std::string courseOf(const Problem& problem, const IntegratorOptions& options, real end) {
    Integrator run(problem, options);
    Readout readout(problem, namesOf(problem));
    std::vector<real> values(readout.size());
    run.watch(problem.expression("y0 - 0.1"));
    run.watch(problem.expression("sin(t)*y0"), Crossing::Down);
    std::string seen;
    try {
        for (int i = 0; i < 300 && run.step(end); ++i) {
            append(seen, run.time());
            for (const ZeroCrossing& zero : run.crossings()) append(seen, zero.time);
            for (const real time : {run.time(), (run.stepBegin() + run.time()) / 2}) {
                run.read(readout, time, values.data());
                for (const real value : values) append(seen, value);
            }
        }
    } catch (const RunError& error) {
        seen += error.what();
    }
    const IntegratorStatistics& statistics = run.statistics();
    for (const std::uint64_t count : {statistics.steps, statistics.repeated, statistics.jumps, statistics.orders}) {
        seen += std::to_string(count) + ' ';
    }
    append(seen, statistics.shortestStep);
    append(seen, statistics.longestStep);
    return seen;
}

TEST(RandomProblems, GiveTheSameBitsTermByTermAndFast) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        const std::string text = RandomProblem(seed, true).text();
        const Problem problem = Problem::fromText(text);
        const real end = seed % 3 == 0 ? -1 : 3;
        IntegratorOptions options;
        if (seed % 4 == 1) options.tolerance = 1e-10L;
        if (seed % 4 == 2) options.maxStep = 0.1L;
        const std::string fast = courseOf(problem, options, end);
        options.plain = true;
        ASSERT_TRUE(fast == courseOf(problem, options, end)) << text;
        ASSERT_GT(fast.size(), 100u) << text;
    }
}

/// Values of all names where a run ends, or nothing when it fails.
std::vector<real> valuesAt(const Problem& problem, real end) {
    Integrator run(problem);
    Readout readout(problem, namesOf(problem));
    std::vector<real> values(readout.size());
    while (run.step(end)) {
    }
    run.read(readout, end, values.data());
    return values;
}

TEST(RandomProblems, AreAtTimesInsideStepsWhereRunsThatEndThereAre) {
    int compared = 0;
    for (unsigned seed = 1000; seed < 1016; ++seed) {
        const std::string text = RandomProblem(seed, false).text();
        const Problem problem = Problem::fromText(text);
        Integrator run(problem);
        Readout readout(problem, namesOf(problem));
        std::vector<real> values(readout.size());
        try {
            while (run.step(2)) {
                for (const real share : {0.37L, 0.81L}) {
                    const real time = run.stepBegin() + (run.time() - run.stepBegin()) * share;
                    run.read(readout, time, values.data());
                    const std::vector<real> ended = valuesAt(problem, time);
                    for (std::size_t i = 0; i < values.size(); ++i) {
                        if (!std::isfinite(values[i])) continue;
                        ASSERT_LE(std::fabs(values[i] - ended[i]), 3e-17L * (1 + std::fabs(values[i]))) << text;
                        ++compared;
                    }
                }
            }
        } catch (const RunError&) {
            // A pole or the edge of a domain, which the last steps only come near to.
        }
    }
    EXPECT_GT(compared, 500);
}

TEST(RandomProblems, ComeBackToWhereTheyStarted) {
    int compared = 0;
    for (unsigned seed = 2000; seed < 2080; ++seed) {
        const std::string text = RandomProblem(seed, false).text();
        const Problem problem = Problem::fromText(text);
        Integrator run(problem);
        Readout readout(problem, namesOf(problem));
        std::vector<real> before(readout.size());
        std::vector<real> after(readout.size());
        run.read(readout, 0, before.data());
        try {
            while (run.step(1)) {
            }
            while (run.step(0)) {
            }
        } catch (const RunError&) {
            continue;
        }
        run.read(readout, 0, after.data());
        for (std::size_t i = 0; i < before.size(); ++i) {
            // Errors grow by about e^2 on the way back, by more where the problem itself makes them.
            ASSERT_LE(std::fabs(after[i] - before[i]), 1e-14L * (1 + std::fabs(before[i]))) << text;
            ++compared;
        }
    }
    EXPECT_GT(compared, 150);
}

TEST(Integrators, GoOnWhereTheyWereMovedTo) {
    const Problem problem = Problem::fromText(RandomProblem(5, true).text());
    Readout readout(problem, namesOf(problem));
    std::vector<real> values(readout.size());
    Integrator first(problem);
    first.step(2);
    Integrator second(std::move(first));
    second.step(2);
    Integrator third(Problem::fromText("x' = 1;"));
    third = std::move(second);
    while (third.step(2)) {
    }
    Readout moved(std::move(readout));
    third.read(moved, 2, values.data());
    EXPECT_EQ(values, valuesAt(problem, 2));
}

}  // namespace
