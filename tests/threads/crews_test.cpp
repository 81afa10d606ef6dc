// SPDX-License-Identifier: MIT
// One run on several threads: the same bits as on one, whatever the system. Meant to be read along by ThreadSanitizer.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/random/generator.hpp"
#include "zirk/classic_integrator.hpp"
#include "zirk/error.hpp"
#include "zirk/integrator.hpp"

using namespace zirk;

namespace {

#if defined(__SANITIZE_THREAD__)
constexpr unsigned systems = 40;
#else
constexpr unsigned systems = 80;
#endif

void append(std::string& bits, const real& number) {
    // Ten bytes hold an extended number; the rest is padding.
    bits.append(reinterpret_cast<const char*>(&number), 10);
}

/// Values and terms of at most `passes` passes, and how the run ended.
std::string bitsOf(const std::string& text, ClassicOptions options, unsigned threads, int passes) {
    options.threads.most = threads;
    options.threads.always = true;
    std::string bits;
    try {
        const Model model = Model::fromText(text);
        ClassicIntegrator run(model, options);
        while (passes-- > 0 && run.next() != ClassicIntegrator::Pass::End) {
            append(bits, run.time());
            for (std::size_t i = 0; i < run.size(); ++i) {
                append(bits, run.value(i));
                for (const real& term : run.terms(i)) append(bits, term);
            }
        }
    } catch (const Error& error) {
        bits += error.what();
    }
    return bits;
}

std::string rod(int cells) {
    std::string text;
    const auto cell = [&](int i) { return i < 1 || i > cells ? std::string("0") : "u" + std::to_string(i); };
    for (int i = 1; i <= cells; ++i) {
        const std::string u = cell(i);
        text += u + "' = " + cell(i - 1) + " - 2*" + u + " + " + cell(i + 1) + " + " + u + "*(1 - " + u + ")/3 & " +
                std::to_string(i % 7) + "/7;\n";
    }
    return text;
}

/// Bodies whose forces all share the distances of their pairs.
std::string bodies(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        std::string force = "0";
        for (int j = 0; j < count; ++j) {
            if (i == j) continue;
            const std::string x = "(x" + std::to_string(i) + " - x" + std::to_string(j) + ")";
            force += " - " + x + "/sqrt(" + x + "*" + x + " + 0.1)";
        }
        text += "x" + std::to_string(i) + "'' = " + force + " & " + std::to_string(i * i % 11) + "/3;\n";
    }
    return text;
}

TEST(ClassicRuns, GiveTheSameBitsOnAnyNumberOfThreads) {
    for (const std::string& text : {rod(50), bodies(5), std::string("y' = z & 1; z' = -y*t;")}) {
        for (const int order : {30, 100}) {
            ClassicOptions options;
            options.limits.setOrder(order);
            options.tMax = 0.5;
            options.step = 0.02;
            const std::string alone = bitsOf(text, options, 1, 30);
            EXPECT_GT(alone.size(), 4000U);
            for (const unsigned threads : {2U, 3U, 7U})
                EXPECT_TRUE(bitsOf(text, options, threads, 30) == alone) << threads;
        }
    }
}

TEST(ClassicRuns, GiveTheSameBitsWhereTermsLeaveTheRangeOfDoubles) {
    ClassicOptions options;
    options.limits.setOrder(80);
    options.tMax = 3;
    std::string text = bodies(3);
    for (int i = 0; i < 20; ++i) text += "w" + std::to_string(i) + "' = -w" + std::to_string(i) + "*x0 & 1e-300;\n";
    text += "big' = big*1e40 & 1e290;\n";
    const std::string alone = bitsOf(text, options, 1, 20);
    for (const unsigned threads : {2U, 3U, 7U}) EXPECT_TRUE(bitsOf(text, options, threads, 20) == alone) << threads;
}

TEST(ClassicRuns, GiveTheSameBitsOnRandomSystems) {
    std::size_t compared = 0;
    for (unsigned seed = 1; seed <= systems; ++seed) {
        // Several together, so that there is something to cut.
        std::string text;
        for (unsigned part = 0; part < 3; ++part) {
            const auto system = random_systems::makeSystem(seed * 3 + part);
            std::vector<std::string> names;
            for (const std::string& name : system.names) names.push_back("s" + std::to_string(part) + "_" + name);
            text += random_systems::renamed(system.text(), system.names, names);
        }
        ClassicOptions options;
        // The program sums the series from the first points on.
        options.limits.setOrder(seed % 2 == 0 ? 64 : 20);
        options.limits.useAllTerms = seed % 5 == 0;
        options.fixedStep = seed % 3 != 0;
        options.step = 0.05;
        const std::string alone = bitsOf(text, options, 1, 12);
        for (const unsigned threads : {2U, 3U, 7U}) {
            ASSERT_TRUE(bitsOf(text, options, threads, 12) == alone) << threads << " threads\n" << text;
        }
        compared += alone.size();
    }
    EXPECT_GT(compared, systems * 2000U);
}

/// Times, all columns between, and zeros of at most `steps` steps, and how the run ended.
std::string bitsOfProblem(const std::string& text, unsigned threads, int steps, real tolerance) {
    IntegratorOptions options;
    options.tolerance = tolerance;
    options.threads.most = threads;
    options.threads.always = true;
    std::string bits;
    try {
        const Problem problem = Problem::fromText(text);
        std::vector<Expression> columns;
        for (const std::string& name : problem.names()) columns.push_back(problem.expression(name));
        Integrator run(problem, options);
        Readout readout(problem, columns);
        std::vector<real> values(columns.size());
        while (steps-- > 0 && run.step(1)) {
            append(bits, run.time());
            // Watched from the third step on: the system is cut anew.
            if (run.statistics().steps == 2) run.watch(columns.front());
            for (const ZeroCrossing& zero : run.crossings()) append(bits, zero.time);
            for (const real& time : {(run.stepBegin() + run.time()) / 2, run.time()}) {
                run.read(readout, time, values.data());
                for (const real& value : values) append(bits, value);
            }
        }
    } catch (const Error& error) {
        bits += error.what();
    }
    return bits;
}

/// Every function, quotients, powers and jumps over a chain of variables.
std::string mixture(int size, unsigned seed = 0) {
    static const char* const forms[] = {"sin(U) + cos(V)",        "exp(-U*U)/(2 + V)", "sqrt(1 + U^2)*V",
                                        "tanh(U - V) + atan(U)",  "(2 + U^2)^1.5 - V", "ln(3 + U) - V*U",
                                        "1/(4 + U*V) + asinh(V)", "U*t - V/(5 + t)"};
    std::string text;
    std::mt19937 random(seed);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int i = 0; i < size; ++i) {
        std::string rate = forms[below(8)];
        for (std::size_t at; (at = rate.find('U')) != std::string::npos;) rate.replace(at, 1, "y" + std::to_string(i));
        for (std::size_t at; (at = rate.find('V')) != std::string::npos;) {
            rate.replace(at, 1, "y" + std::to_string(below(size)));
        }
        text += "y" + std::to_string(i) + "' = " + rate + " - 2*y" + std::to_string(i) + " & " + std::to_string(i % 5) +
                "/4;\n";
    }
    return text + "sum = y0 + y1*y2;\n";
}

TEST(Integrators, GiveTheSameBitsOnAnyNumberOfThreads) {
    for (const std::string& text : {rod(600), bodies(6), mixture(40), mixture(40) + "j' = trunc(3*y1) - j;",
                                    std::string("y' = z & 1; z' = -y*t;")}) {
        for (const real tolerance : {1e-18L, 1e-9L}) {
            const std::string alone = bitsOfProblem(text, 1, 12, tolerance);
            EXPECT_GE(alone.size(), 100U);
            for (const unsigned threads : {2U, 3U, 7U}) {
                EXPECT_TRUE(bitsOfProblem(text, threads, 12, tolerance) == alone) << threads << '\n' << text;
            }
        }
    }
}

TEST(Integrators, GiveTheSameBitsWhereDoublesHaveNotTheRange) {
    const std::string text = rod(20) + "small' = -small & 1e-320; large' = large*(1 - large/1e310) & 1e305;";
    const std::string alone = bitsOfProblem(text, 1, 20, 1e-18L);
    for (const unsigned threads : {2U, 3U, 7U})
        EXPECT_TRUE(bitsOfProblem(text, threads, 20, 1e-18L) == alone) << threads;
}

TEST(Integrators, FailWithTheSameWords) {
    const auto expectSame = [](const std::string& text, const std::string& words) {
        const std::string alone = bitsOfProblem(rod(20) + text, 1, 1000, 1e-18L);
        EXPECT_NE(alone.find(words), std::string::npos);
        for (const unsigned threads : {2U, 7U}) {
            EXPECT_TRUE(bitsOfProblem(rod(20) + text, threads, 1000, 1e-18L) == alone) << threads << words;
        }
    };
    expectSame("p' = p^2 & 1.5;", "p has a singularity");
    expectSame("q' = sqrt(1 - 3*t);", "comes to the edge of its domain");
    expectSame("r' = ln(-u1 - 1);", "ln(-u1 - 1)");
}

TEST(Integrators, GiveTheSameBitsOnRandomSystems) {
    std::size_t compared = 0;
    for (unsigned seed = 1; seed <= systems; ++seed) {
        for (const std::string& text :
             {random_systems::makeSystem(seed).text(), mixture(1 + static_cast<int>(seed) % 30, seed)}) {
            const std::string alone = bitsOfProblem(text, 1, 5, 1e-18L);
            for (const unsigned threads : {2U, 3U, 7U}) {
                ASSERT_TRUE(bitsOfProblem(text, threads, 5, 1e-18L) == alone) << threads << " threads\n" << text;
            }
            compared += alone.size();
        }
    }
    EXPECT_GT(compared, systems * 1000U);
}

TEST(Integrators, ShareTheProcessorsOfTheProcess) {
    const std::string text = rod(400);
    const Problem problem = Problem::fromText(text);
    IntegratorOptions options;
    options.threads.most = 0;
    const auto solve = [&](std::string& bits, const IntegratorOptions& chosen) {
        Integrator run(problem, chosen);
        Readout readout(problem, {problem.expression("u7")});
        for (int i = 0; i < 5 && run.step(1); ++i) {
            real value = 0;
            run.read(readout, run.time(), &value);
            append(bits, value);
        }
    };
    std::string alone;
    solve(alone, {});
    std::vector<std::string> together(4);
    std::vector<std::thread> threads;
    for (std::string& bits : together) threads.emplace_back([&] { solve(bits, options); });
    for (std::thread& thread : threads) thread.join();
    for (const std::string& bits : together) EXPECT_TRUE(bits == alone);
}

}  // namespace
