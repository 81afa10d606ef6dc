// SPDX-License-Identifier: MIT
// Models and runs of them as programs use them: every run begins afresh, and none meets another.
#include "zirk/model.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "expr/real.hpp"
#include "zirk/classic_integrator.hpp"

using namespace zirk;

namespace {

using Pass = ClassicIntegrator::Pass;

const char* const pendulum = "y'' = -sin(y) & 1; x = y + t; z' = -3*z*y & 2;";

/// Everything that a point shows, with every bit.
std::vector<real> pointOf(const ClassicIntegrator& run) {
    std::vector<real> all = {run.time(), run.previousTime(), run.step(), static_cast<real>(run.order())};
    for (std::size_t i = 0; i < run.size(); ++i) {
        all.push_back(run.value(i));
        for (const real& term : run.terms(i)) all.push_back(term);
    }
    return all;
}

std::vector<std::vector<real>> courseOf(ClassicIntegrator run) {
    std::vector<std::vector<real>> course;
    while (run.next() != Pass::End) course.push_back(pointOf(run));
    return course;
}

TEST(ModelTest, KnowsItsNamesInBytewiseOrder) {
    EXPECT_EQ(Model::fromText("b = 1; a'' = sin(b); B' = 1;").names(),
              (std::vector<std::string>{"B", "a", "a%1", "b"}));
    EXPECT_TRUE(Model::fromText("y(0) = 1;").names().empty());
}

TEST(ModelTest, KeepsWhatTheCompilerSaidOfATextThatItAccepted) {
    EXPECT_EQ(Model::fromText(pendulum).messages(), "");
    EXPECT_EQ(Model::fromText("y' = 1; y(5) = 2;").messages(),
              "#(ERR) ERROR: Start condition must be defined for zero, not for other value \"5\" at line #1\n");
}

TEST(ModelTest, IsReadFromASourceInPieces) {
    const std::string text = pendulum;
    std::size_t at = 0;
    int calls = 0;
    const Model model = Model::read([&](char* buffer, std::size_t size) {
        ++calls;
        const std::size_t count = text.copy(buffer, size, at);
        at += count;
        return count;
    });
    EXPECT_GE(calls, 1);
    EXPECT_EQ(courseOf(ClassicIntegrator(model)), courseOf(ClassicIntegrator(Model::fromText(text))));
    EXPECT_EQ(courseOf(ClassicIntegrator(model)), courseOf(ClassicIntegrator(Model::fromText(text)))) << "once more";
}

TEST(ModelTest, LetsThroughWhatItsSourceThrows) {
    EXPECT_THROW(Model::read([](char*, std::size_t) -> std::size_t { throw Error("no more\n", 2); }), Error);
}

TEST(ModelTest, BeginsEveryRunAfresh) {
    const Model model = Model::fromText(pendulum);
    const auto first = courseOf(ClassicIntegrator(model));
    EXPECT_GT(first.size(), 5U);
    EXPECT_EQ(courseOf(ClassicIntegrator(model)), first);
    const Model copy = model;
    EXPECT_EQ(courseOf(ClassicIntegrator(copy)), first);
    // A run that was left half way leaves nothing behind.
    ClassicIntegrator left(model);
    for (int i = 0; i < 3; ++i) left.next();
    EXPECT_EQ(courseOf(ClassicIntegrator(model)), first);
}

TEST(ModelTest, GivesOtherLimitsTheBitsOfAModelThatWasReadForThem) {
    // The factor becomes 1 and the summand vanishes where constants that near are folded.
    const std::string text = "y' = -y*1.00000000001 + 1e-11*t & 1; z' = y & 1;";
    ClassicOptions shorter;
    shorter.limits.setOrder(3);
    ClassicOptions exact;
    exact.limits.simplifySmall = false;
    ClassicOptions finer;
    finer.limits.accuracy = 1e-12L;
    std::vector<std::vector<std::vector<real>>> courses;
    for (const ClassicOptions& options : {ClassicOptions(), shorter, exact, finer}) {
        const Model model = Model::fromText(text);
        courses.push_back(courseOf(ClassicIntegrator(Model::fromText(text, options.limits), options)));
        EXPECT_EQ(courseOf(ClassicIntegrator(model, options)), courses.back());
        EXPECT_EQ(courseOf(ClassicIntegrator(model, options)), courses.back()) << "once more";
        EXPECT_EQ(courseOf(ClassicIntegrator(model)), courses.front()) << "with the limits of the model";
    }
    for (std::size_t i = 0; i < courses.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(courses[i], courses[j]) << i << ' ' << j;
    }
}

TEST(ModelTest, TellsWhereANameIsNotDefined) {
    const Model model = Model::fromText("y' = x;");
    try {
        const ClassicIntegrator run(model);
        ADD_FAILURE() << "prepared";
    } catch (const Error& error) {
        EXPECT_STREQ(error.what(), "Reference to undefined equation \"x\"");
    }
}

TEST(ClassicIntegratorTest, GivesValuesByNameAndByIndex) {
    ClassicOptions options;
    options.tMax = 0.5L;
    ClassicIntegrator run(Model::fromText("y' = y & 1; x = 3*y; w'' = exp(t) & 4;"), options);
    ASSERT_EQ(run.size(), 5U);
    const char* const names[] = {"%0", "w", "w%1", "x", "y"};
    for (std::size_t i = 0; i < run.size(); ++i) {
        EXPECT_EQ(run.name(i), names[i]);
        EXPECT_EQ(run.index(names[i]), i);
    }
    EXPECT_EQ(run.next(), Pass::Point);
    EXPECT_EQ(run.time(), 0);
    EXPECT_EQ(run.value("y"), 1);
    EXPECT_EQ(run.value("w"), 4);
    while (run.next() != Pass::End) {
    }
    EXPECT_EQ(run.time(), 0.5L);
    EXPECT_TRUE(run.isLastStep());
    EXPECT_LT(std::fabs(run.value("y") - std::exp(0.5L)), 1e-12L);
    EXPECT_LT(std::fabs(run.value("w%1") - (std::exp(0.5L) - 1)), 1e-12L);
    for (std::size_t i = 0; i < run.size(); ++i) EXPECT_EQ(run.value(run.name(i)), run.value(i)) << names[i];
}

TEST(ClassicIntegratorTest, RefusesAnUnknownName) {
    ClassicIntegrator run(Model::fromText("y' = y & 1;"));
    for (const char* name : {"x", "", "y%1", "Y"}) {
        EXPECT_THROW(run.index(name), Error) << name;
        EXPECT_THROW(run.value(name), Error) << name;
    }
    try {
        run.index("x");
    } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()).find("\"x\""), std::string::npos) << error.what();
    }
}

// y = 1 + t + t^2 over the step from 0 to h, in terms 1, h, h^2, and zeros from there on.
TEST(ClassicIntegratorTest, GivesTheTermsOfTheStepThatLedToThePoint) {
    ClassicOptions options;
    options.step = 0.25L;
    options.fixedStep = true;
    for (const Evaluation evaluation : {Evaluation::NodeByNode, Evaluation::Compiled}) {
        ClassicIntegrator run(Model::fromText("y' = 1 + 2*s & 1; s' = 1; x = 7;"), options, nullptr, evaluation);
        EXPECT_EQ(run.next(), Pass::Point);
        for (std::size_t i = 0; i < run.size(); ++i) {
            // The start value is the one term of a point that no step led to.
            const bool isDefinition = run.name(i) == "x";
            EXPECT_EQ(run.highestTerm(i), isDefinition ? -1 : 0) << run.name(i);
            EXPECT_EQ(run.terms(i), isDefinition ? std::vector<real>() : std::vector<real>{run.value(i)});
        }
        EXPECT_EQ(run.next(), Pass::Point);
        const std::size_t y = run.index("y");
        const std::vector<real> terms = run.terms(y);
        EXPECT_EQ(terms, (std::vector<real>{1, 0.25L, 0.0625L, 0, 0, 0, 0}));
        ASSERT_EQ(run.highestTerm(y), 6);
        for (int k = 0; k <= 6; ++k) EXPECT_EQ(run.term(y, k), terms[static_cast<std::size_t>(k)]) << k;
        EXPECT_EQ(run.highestTerm(run.index("x")), -1);
        EXPECT_EQ(run.order(), 3);
        EXPECT_EQ(run.value("y"), 1.3125L);
    }
}

TEST(ClassicIntegratorTest, GivesOfADefinitionTheOneTermThatOthersSee) {
    ClassicOptions options;
    options.step = 0.25L;
    options.fixedStep = true;
    options.tMax = 3;
    for (const Evaluation evaluation : {Evaluation::NodeByNode, Evaluation::Compiled}) {
        ClassicIntegrator run(Model::fromText("s' = 1 & 3; a = 7; x = 2*s; y' = x;"), options, nullptr, evaluation);
        const std::size_t x = run.index("x");
        run.next();
        // More points than are left to the nodes.
        for (int point = 1; point < 8; ++point) {
            run.next();
            const real before = 2 * (3 + run.previousTime());
            EXPECT_EQ(run.value(x), before + 0.5L);
            EXPECT_EQ(run.term(x, 0), before);
            EXPECT_EQ(run.term(x, 1), 0);
            EXPECT_EQ(run.term(x, 30), 0);
            EXPECT_EQ(run.term(run.index("y"), 1), before * 0.25L) << "who uses it";
        }
    }
}

TEST(ClassicIntegratorTest, ThrowsTheSameAgainOnceItHasFailed) {
    ClassicOptions options;
    options.tMax = 2;
    ClassicIntegrator run(Model::fromText("y' = y*y & 1;"), options);
    std::string first;
    try {
        while (run.next() != Pass::End) {
        }
    } catch (const RunError& error) {
        first = error.text();
    }
    EXPECT_EQ(first.find("#(ERR) No progress at time 1"), 0u) << first;
    const ClassicStatistics counted = run.statistics();
    try {
        run.next();
        FAIL() << "goes on";
    } catch (const RunError& error) {
        EXPECT_EQ(error.text(), first);
    }
    EXPECT_EQ(run.statistics().rejected, counted.rejected);
}

TEST(ClassicIntegratorTest, ThrowsAgainWhatItsObserverThrew) {
    class Unwilling final : public ClassicObserver {
        void stiffnessTested(const StiffnessTest&) override { throw 42; }
    } unwilling;
    ClassicIntegrator run(Model::fromText("y' = -y & 1;"), {}, &unwilling);
    EXPECT_EQ(run.next(), Pass::Point);
    EXPECT_THROW(run.next(), int);
    EXPECT_THROW(run.next(), int);
}

TEST(ClassicIntegratorTest, StaysAtItsEndWhateverEndedIt) {
    ClassicOptions untilSteady;
    untilSteady.limits.steadyStop = 3;
    untilSteady.fixedStep = true;
    ClassicOptions untilPeriod;
    untilPeriod.tMax = 100;
    untilPeriod.fixedStep = true;
    untilPeriod.step = 1;
    untilPeriod.limits.simplifySmall = false;
    untilPeriod.period.periodicName = "x";
    untilPeriod.period.periodicCount = 1;
    struct {
        const char* text;
        ClassicOptions options;
        real end;
    } const cases[] = {
        {pendulum, {}, 1},
        // Nothing moves at the three points behind the first.
        {"y' = 0 & 1;", untilSteady, 0.3L},
        // Two values near the accuracy take turns, and both have come back at the fourth point.
        {"s'' = -pi*pi*s & 1; x = 1e-10*(0.8 + 0.7*s);", untilPeriod, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ClassicIntegrator run(Model::fromText(c.text), c.options);
        while (run.next() != Pass::End) {
        }
        EXPECT_LT(std::fabs(run.time() - c.end), 1e-9L);
        const std::vector<real> last = pointOf(run);
        const int pass = run.pass();
        const long long points = run.statistics().points;
        for (int i = 0; i < 5; ++i) EXPECT_EQ(run.next(), Pass::End);
        EXPECT_EQ(pointOf(run), last);
        EXPECT_EQ(run.pass(), pass);
        EXPECT_EQ(run.statistics().points, points);
    }
}

/// Counts what a run decides.
class Counter : public ClassicObserver {
public:
    int halved = 0;
    int enlarged = 0;
    int tested = 0;
    std::string unknown;

    void stepHalved(real, real) override { ++halved; }
    void stepEnlarged(real, real) override { ++enlarged; }
    void stiffnessTested(const StiffnessTest&) override { ++tested; }
    void periodUnknown(const std::string& name) override { unknown += name; }
};

TEST(ClassicIntegratorTest, CountsItsPassesAndTellsWhatItDecides) {
    ClassicOptions options;
    options.step = 8;
    options.tMax = 30;
    options.period.periodicName = "q";
    options.period.periodicCount = 1;
    Counter counter;
    ClassicIntegrator run(Model::fromText("y'' = -y & 1; v' = -v/100 & 1;"), options, &counter);
    long long points = 0;
    long long rejected = 0;
    for (Pass pass = run.next(); pass != Pass::End; pass = run.next()) {
        ++(pass == Pass::Point ? points : rejected);
        if (pass == Pass::Point) {
            EXPECT_EQ(run.pass(), points + rejected - 1);
        }
    }
    EXPECT_EQ(run.statistics().points, points);
    EXPECT_EQ(run.statistics().rejected, rejected);
    EXPECT_GT(rejected, 0);
    EXPECT_EQ(counter.halved, rejected);
    EXPECT_GT(counter.tested, 0);
    EXPECT_EQ(counter.unknown, "q");
}

TEST(ClassicIntegratorTest, DoesNotMeetOthersOnItsThread) {
    const char* const texts[] = {pendulum, "y' = -y*y*t & 1;", "a'' = -a*exp(t) & 1; b = a;"};
    ClassicOptions options[3];
    options[1].step = 0.3L;
    options[2].limits.setOrder(12);
    const Model shared = Model::fromText(pendulum);
    for (const Evaluation evaluation : {Evaluation::NodeByNode, Evaluation::Compiled}) {
        std::vector<std::vector<std::vector<real>>> alone;
        std::vector<ClassicIntegrator> runs;
        for (int i = 0; i < 3; ++i) {
            alone.push_back(courseOf(ClassicIntegrator(Model::fromText(texts[i]), options[i], nullptr, evaluation)));
            runs.emplace_back(Model::fromText(texts[i]), options[i], nullptr, evaluation);
        }
        // Two more of one model.
        for (int i = 0; i < 2; ++i) {
            alone.push_back(alone[0]);
            runs.emplace_back(shared, options[0], nullptr, evaluation);
        }
        std::vector<std::vector<std::vector<real>>> together(runs.size());
        for (bool goesOn = true; goesOn;) {
            goesOn = false;
            for (std::size_t i = 0; i < runs.size(); ++i) {
                if (runs[i].next() == Pass::End) continue;
                goesOn = true;
                together[i].push_back(pointOf(runs[i]));
            }
        }
        for (std::size_t i = 0; i < runs.size(); ++i) EXPECT_EQ(together[i], alone[i]) << i;
    }
}

TEST(ClassicIntegratorTest, ShowsItsEquations) {
    const ClassicIntegrator run(Model::fromText("y'' = 2*y & 3; x = y;"));
    EXPECT_EQ(run.equation(run.index("x")), "#(TREEDUMP) ALG: \tx = [y];\n");
    EXPECT_EQ(run.equation(run.index("y")), "#(TREEDUMP) DIF: \ty' = [y%1] & 3;\n");
    EXPECT_EQ(run.equation(run.index("y%1")), "#(TREEDUMP) DIF: \ty%1' = (2 * [y]) & 0;\n");
}

}  // namespace
