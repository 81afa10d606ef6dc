// SPDX-License-Identifier: MIT
// Runs on several threads: each gives the bits that it gives alone. Meant to be read along by ThreadSanitizer.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "zirk/classic_integrator.hpp"
#include "zirk/integrator.hpp"

using namespace zirk;

namespace {

const char* const lorenz = "x' = 10*(y - x) & 1; y' = x*(28 - z) - y & 1; z' = x*y - 8*z/3 & 1; r = sqrt(x*x + y*y);";
const char* const pendulum = "a'' = -sin(a) & 2; e = a'*a'/2 - cos(a); s' = exp(-a*a) & 0; w' = tanh(a)*trunc(2*a);";
/// Deep enough that formulas are walked and not recursed into.
std::string chain() {
    std::string text = "y' = z";
    for (int i = 0; i < 2000; ++i) text += " - z/" + std::to_string(i + 2);
    return text + " & 1; z'' = -z & 1;";
}

/// All values of all points, as bytes.
std::string bitsOf(const Model& model, const ClassicOptions& options, Evaluation evaluation) {
    ClassicIntegrator run(model, options, nullptr, evaluation);
    std::string bits;
    while (run.next() != ClassicIntegrator::Pass::End) {
        for (std::size_t i = 0; i < run.size(); ++i) {
            // Ten bytes hold an extended number; the rest is padding.
            bits.append(reinterpret_cast<const char*>(&run.value(i)), 10);
            for (const real& term : run.terms(i)) bits.append(reinterpret_cast<const char*>(&term), 10);
        }
    }
    return bits;
}

ClassicOptions optionsFor(real end) {
    ClassicOptions options;
    options.tMax = end;
    options.step = 0.03;
    return options;
}

template <class Action>
void onThreads(std::size_t count, const Action& action) {
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < count; ++i) threads.emplace_back([&action, i] { action(i); });
    for (std::thread& thread : threads) thread.join();
}

TEST(TwoModels, OnTwoThreadsGiveEachItsOwnBits) {
    const std::string texts[] = {lorenz, pendulum, chain()};
    for (const Evaluation evaluation : {Evaluation::Compiled, Evaluation::NodeByNode}) {
        std::string alone[3];
        std::string together[3];
        for (int i = 0; i < 3; ++i) alone[i] = bitsOf(Model::fromText(texts[i]), optionsFor(1 + i), evaluation);
        onThreads(3, [&](std::size_t i) {
            together[i] = bitsOf(Model::fromText(texts[i]), optionsFor(1 + static_cast<real>(i)), evaluation);
        });
        for (int i = 0; i < 3; ++i) {
            EXPECT_GT(alone[i].size(), 1000u);
            EXPECT_EQ(alone[i], together[i]) << i;
        }
    }
}

TEST(OneModel, IsRunOnSeveralThreadsAtOnce) {
    const Model model = Model::fromText(lorenz);
    const std::string alone = bitsOf(Model::fromText(lorenz), optionsFor(2), Evaluation::Compiled);
    std::vector<std::string> together(4);
    onThreads(4, [&](std::size_t i) { together[i] = bitsOf(model, optionsFor(2), Evaluation::Compiled); });
    for (const std::string& bits : together) EXPECT_EQ(bits, alone);
}

TEST(OneModel, OutlivesTheThreadThatMadeIt) {
    std::unique_ptr<Model> model;
    onThreads(1, [&](std::size_t) { model = std::make_unique<Model>(Model::fromText(pendulum)); });
    const std::string alone = bitsOf(Model::fromText(pendulum), optionsFor(1), Evaluation::Compiled);
    std::string elsewhere;
    onThreads(1, [&](std::size_t) { elsewhere = bitsOf(*model, optionsFor(1), Evaluation::Compiled); });
    EXPECT_EQ(elsewhere, alone);
    EXPECT_EQ(bitsOf(*model, optionsFor(1), Evaluation::Compiled), alone) << "once more, from its text";
}

TEST(OneRun, MovesFromThreadToThread) {
    const Model model = Model::fromText(lorenz);
    ClassicIntegrator run(model, optionsFor(1));
    ClassicIntegrator other(model, optionsFor(1));
    while (other.next() != ClassicIntegrator::Pass::End) {
    }
    bool ended = false;
    while (!ended) {
        onThreads(1, [&](std::size_t) { ended = run.next() == ClassicIntegrator::Pass::End; });
    }
    EXPECT_EQ(run.value("x"), other.value("x"));
    EXPECT_EQ(run.time(), 1);
}

TEST(OneRun, IsReadOnSeveralThreadsAtOnce) {
    ClassicIntegrator run(Model::fromText(lorenz), optionsFor(1));
    // Well behind the points that are left to the nodes, and asked for its terms by nobody yet.
    for (int point = 0; point < 20; ++point) run.next();
    std::vector<std::vector<std::vector<real>>> seen(4);
    onThreads(4, [&](std::size_t i) {
        for (std::size_t variable = 0; variable < run.size(); ++variable) seen[i].push_back(run.terms(variable));
    });
    for (const auto& terms : seen) EXPECT_EQ(terms, seen.front());
    EXPECT_GT(seen.front()[run.index("x")].size(), 5u);
}

/// Times, zeros and values of all steps, as bytes.
std::string bitsOf(const Problem& problem, bool plain) {
    IntegratorOptions options;
    options.plain = plain;
    Integrator run(problem, options);
    const Expression first = problem.expression(problem.names().front());
    Readout readout(problem, {first});
    run.watch(first);
    std::string bits;
    const auto append = [&bits](real number) { bits.append(reinterpret_cast<const char*>(&number), 10); };
    while (run.step(10)) {
        append(run.time());
        for (const ZeroCrossing& zero : run.crossings()) append(zero.time);
        real value = 0;
        run.read(readout, (run.stepBegin() + run.time()) / 2, &value);
        append(value);
    }
    return bits;
}

TEST(OneProblem, IsSolvedOnSeveralThreadsAtOnce) {
    for (const std::string& text : {std::string(lorenz), std::string(pendulum), chain()}) {
        const Problem problem = Problem::fromText(text);
        const std::string alone = bitsOf(Problem::fromText(text), false);
        EXPECT_GT(alone.size(), 100u);
        std::vector<std::string> together(4);
        onThreads(4, [&](std::size_t i) { together[i] = bitsOf(problem, i % 2 == 1); });
        for (const std::string& bits : together) EXPECT_EQ(bits, alone);
    }
}

TEST(Problems, AreReadOnSeveralThreadsAtOnce) {
    std::vector<std::string> explained(4);
    onThreads(4, [&](std::size_t i) { explained[i] = Problem::fromText(pendulum).explain(); });
    for (const std::string& text : explained) EXPECT_EQ(text, Problem::fromText(pendulum).explain());
}

TEST(Errors, OnSeveralThreadsAreEachThrowersOwn) {
    std::vector<std::string> texts(4);
    onThreads(4, [&](std::size_t i) {
        try {
            bitsOf(Model::fromText("y" + std::to_string(i) + "' = ;"), {}, Evaluation::Compiled);
        } catch (const ParseError& error) {
            texts[i] = error.what() + std::to_string(error.column());
        }
    });
    for (const std::string& text : texts) EXPECT_EQ(text, "ERROR: parse error \";\" at line #17");
}

}  // namespace
