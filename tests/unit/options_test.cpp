// SPDX-License-Identifier: MIT
// Every option letter, the rules that options share, and what answers for them.
#include "driver/options.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <limits>

#include "driver/usage.hpp"
#include "zirk/error.hpp"

using namespace zirk;

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

class Options : public testing::Test {
protected:
    Options() { settings_.reset(); }
    ~Options() override {
        std::fclose(results_);
        std::fclose(log_);
    }

    void apply(int letter, const char* argument = nullptr) {
        applyOption(letter, argument, settings_, output_, commandLine_);
    }

    void parse(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "zirk");
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        commandLine_ = parseOptions(static_cast<int>(arguments.size()), argv.data(), settings_, output_);
    }

    std::string results() { return contents(results_); }
    std::string log() { return contents(log_); }

    Settings settings_;
    CommandLine commandLine_;

private:
    std::string contents(std::FILE* file) {
        output_.flush();
        std::rewind(file);
        std::string text;
        for (int c = 0; (c = std::getc(file)) != EOF;) text += static_cast<char>(c);
        return text;
    }

    std::FILE* results_ = std::tmpfile();
    std::FILE* log_ = std::tmpfile();
    Output output_{fileno(results_), fileno(log_)};
};

TEST_F(Options, SetIntegers) {
    const std::pair<char, int*> fields[] = {
        {'3', &settings_.layout.points3D},
        {'D', &settings_.dumpDY},
        {'p', &settings_.numbers.printPrecision},
        {'w', &settings_.numbers.printWidth},
        {'R', &settings_.classic.period.periodicBuffer},
        {'x', &settings_.classic.stiffness.stiffExpDiff},
    };
    for (const auto& [letter, field] : fields) {
        SCOPED_TRACE(letter);
        apply(letter, "7");
        EXPECT_EQ(*field, 7);
        apply(letter, " -8z");
        EXPECT_EQ(*field, -8);
        apply(letter, "99999999999");
        EXPECT_EQ(*field, kLargest);
        apply(letter, "-99999999999999999999");
        EXPECT_EQ(*field, kSmallest);
        apply(letter, "many");
        EXPECT_EQ(*field, 0);
    }
    apply('S', "3");
    EXPECT_EQ(settings_.classic.limits.steadyStop, 3U);
}

TEST_F(Options, SetFlagsExactlyByOne) {
    const std::pair<char, bool*> fields[] = {
        {'A', &settings_.layout.all3DValues},
        {'d', &settings_.dumpTree},
        {'f', &settings_.classic.fixedStep},
        {'i', &settings_.classic.limits.simplifySmall},
        {'L', &settings_.rows.printOnlyTmax},
        {'O', &settings_.layout.printOrderColumn},
        {'T', &settings_.layout.printTempEquations},
        {'U', &settings_.classic.limits.useAllTerms},
        {'X', &settings_.classic.stiffness.stiffEveryStep},
    };
    for (const auto& [letter, field] : fields) {
        SCOPED_TRACE(letter);
        for (const char* no : {"0", "2", "-1", "10", "yes", ""}) {
            apply(letter, "1");
            EXPECT_TRUE(*field);
            apply(letter, no);
            EXPECT_FALSE(*field) << no;
        }
    }
}

TEST_F(Options, SetRealsAtDoublePrecision) {
    const std::pair<char, real*> fields[] = {
        {'a', &settings_.classic.limits.accuracy},
        {'F', &settings_.rows.printEvery},
        {'s', &settings_.classic.step},
        {'t', &settings_.classic.tMax},
    };
    for (const auto& [letter, field] : fields) {
        SCOPED_TRACE(letter);
        apply(letter, "0.3");
        EXPECT_EQ(*field, static_cast<real>(0.3));
        EXPECT_NE(*field, 0.3L);
        apply(letter, "-1e400");
        EXPECT_EQ(*field, -std::numeric_limits<real>::infinity());
        apply(letter, "fast");
        EXPECT_EQ(*field, 0);
    }
}

TEST_F(Options, SetTextsAsGiven) {
    apply('P', "y1:y2");
    apply('N', " a b:");
    apply('G', "my plot");
    EXPECT_EQ(settings_.selection.printList, "y1:y2");
    EXPECT_EQ(settings_.selection.noPrintList, " a b:");
    EXPECT_EQ(settings_.plot.gnuplotFile, "my plot");
    EXPECT_EQ(settings_.layout.gnuplotOutput, "x11");
    EXPECT_FALSE(settings_.plot.gnuplotRequested) << "a file name alone asks for no script";
    apply('g', "png");
    EXPECT_EQ(settings_.layout.gnuplotOutput, "png");
    EXPECT_TRUE(settings_.plot.gnuplotRequested);
}

TEST_F(Options, OfThePeriodAreSplitAtTheFirstTwoColons) {
    struct {
        const char* text;
        const char* name;
        int count;
        real derivative;
    } const cases[] = {
        {"y1:3:0.5", "y1", 3, 0.5}, {":3:0.5", "", 0, 0.5}, {"y1", "y1", 0, 0},     {"y1:4", "y1", 4, 0},
        {"y1::2", "y1", 0, 2},      {"", "", 0, 0},         {"a:1:2:3", "a", 1, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        settings_.classic.period.periodicCount = 9;
        apply('r', c.text);
        EXPECT_EQ(settings_.classic.period.periodicName, c.name);
        EXPECT_EQ(settings_.classic.period.periodicCount, c.count);
        EXPECT_EQ(settings_.classic.period.periodicDeriv, c.derivative);
    }
}

TEST_F(Options, OfOrderAndZeroTermsCombineAsymmetrically) {
    apply('o', "10");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 14);
    apply('z', "2");
    EXPECT_EQ(settings_.classic.limits.zeroTerms, 2);
    EXPECT_EQ(settings_.classic.limits.maxOrder, 16) << "on top of 14, which contains the old zero terms";
    apply('o', "10");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 12);

    settings_.classic.limits.zeroTerms = 4;
    settings_.reset();
    EXPECT_EQ(settings_.classic.limits.maxOrder, 34);
    apply('z', "2");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 36);
    apply('z', "2");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 38) << "repeated settings accumulate";
    apply('o', "99999999999");
    EXPECT_EQ(settings_.classic.limits.maxOrder, kLargest) << "the sum stays in range";
}

TEST_F(Options, OfTheStepPassThroughDoublePrecision) {
    const real before = settings_.classic.step;
    apply('s', "0.1");
    EXPECT_EQ(settings_.classic.step, before) << "the default is the double nearest to 0.1";
    apply('s', "0.75");
    EXPECT_EQ(settings_.classic.step, 0.75L);
}

TEST_F(Options, OfHelpAndOfErrorsEndWithTheUsageText) {
    for (const int letter : {'h', '?'}) {
        apply('t', letter == 'h' ? "3" : "4");
        try {
            apply(letter);
            ADD_FAILURE() << "no failure";
        } catch (const Error& error) {
            EXPECT_EQ(error.status(), 1);
            EXPECT_EQ(error.text(), usageText(settings_));
        }
    }
}

TEST_F(Options, OfTheVersionNeedNothingElse) {
    parse({"-v", "-h", "no such file"});
    EXPECT_FALSE(commandLine_.solve);
    EXPECT_EQ(results(), "ZIRK/C version 1.0\n");
    EXPECT_EQ(log(), "");
}

TEST_F(Options, WithoutAHandlerShowTheirCode) {
    apply(':');
    apply('W');
    EXPECT_EQ(log(),
              "#(WARN) Missing argument for some option\n"
              "#(WARN) Option -87 not supported in \"simple number precision\" version\n");
    try {
        apply('q');
        ADD_FAILURE() << "no failure";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(), "#(WARN) Wrong parameter 113\n");
        EXPECT_EQ(error.status(), 1);
    }
    EXPECT_EQ(results(), "");
}

TEST_F(Options, TurnANumberOfPrintedValuesIntoAnInterval) {
    parse({"-F", "-10", "-t", "5", "/dev/null"});
    EXPECT_EQ(settings_.rows.printEvery, 0.5L);
    parse({"-F-4", "/dev/null", "-t2"});
    EXPECT_EQ(settings_.rows.printEvery, 0.5L) << "after the last option, wherever the file stands";
    parse({"-F", "0", "/dev/null"});
    EXPECT_EQ(settings_.rows.printEvery, 0);
    parse({"-F", "0.25", "/dev/null"});
    EXPECT_EQ(settings_.rows.printEvery, 0.25L);
    EXPECT_EQ(log(), "");
}

TEST_F(Options, AreFollowedByOneFileName) {
    parse({"/dev/null", "two", "three"});
    EXPECT_TRUE(commandLine_.solve);
    ASSERT_NE(commandLine_.input, nullptr);
    EXPECT_EQ(commandLine_.input->get(), std::istream::traits_type::eof());
    EXPECT_EQ(log(), "#(WARN) Some unused parameters in the way...\n");
}

TEST_F(Options, FailWithTheSystemsTextForAnUnreadableFile) {
    try {
        parse({"no/such/file"});
        ADD_FAILURE() << "no failure";
    } catch (const Error& error) {
        EXPECT_EQ(error.text(), "#(WARN) Error by opening input file: No such file or directory\n");
        EXPECT_EQ(error.status(), 1);
    }
}

}  // namespace
