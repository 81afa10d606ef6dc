// SPDX-License-Identifier: MIT
// One run on several threads: the same bits as on one, whatever the system. Meant to be read along by ThreadSanitizer.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/random/generator.hpp"
#include "zirk/classic_integrator.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

#if defined(__SANITIZE_THREAD__)
constexpr unsigned systems = 60;
#else
constexpr unsigned systems = 300;
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
            for (const unsigned threads : {2U, 3U, 7U}) EXPECT_EQ(bitsOf(text, options, threads, 30), alone) << threads;
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
    for (const unsigned threads : {2U, 3U, 7U}) EXPECT_EQ(bitsOf(text, options, threads, 20), alone) << threads;
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
            ASSERT_EQ(bitsOf(text, options, threads, 12), alone) << threads << " threads\n" << text;
        }
        compared += alone.size();
    }
    EXPECT_GT(compared, systems * 2000U);
}

}  // namespace
