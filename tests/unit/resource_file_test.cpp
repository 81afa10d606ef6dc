// SPDX-License-Identifier: MIT
// Lines of the resource file: keys, values, comments, echoes and warnings.
#include "driver/resource_file.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

using namespace zirk;

namespace {

class ResourceLine : public testing::Test {
protected:
    ResourceLine() { settings_.reset(); }

    /// What the line writes.
    std::string apply(const std::string& line, int number = 1) {
        std::ostringstream log;
        applyResourceLine(line, number, settings_, log);
        return log.str();
    }

    Settings settings_;
};

TEST_F(ResourceLine, MayHaveASmallKeyAndAComment) {
    EXPECT_EQ(apply("maxorder: 20   # my order"), "#(RES_SET) MaxOrder = 20\n");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 24);
    EXPECT_EQ(apply(" \tMax Order=\t21"), "#(RES_SET) MaxOrder = 21\n");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 25);
}

TEST_F(ResourceLine, WithoutContentIsSilent) {
    for (const char* line : {"", "  \t ", "% comment only", "  # TMAX = 2", "; TMAX = 2"}) EXPECT_EQ(apply(line), "");
    EXPECT_EQ(settings_.classic.tMax, 1);
}

TEST_F(ResourceLine, WithAnUnknownKeyIsReportedWithItsNumber) {
    EXPECT_EQ(apply("FOO=1", 3), "(WARN) Invalid keyword in rc file, line 3: 'FOO'\n");
    EXPECT_EQ(apply("STEP 0.5", 4), "(WARN) Invalid keyword in rc file, line 4: 'STEP0.5'\n");
    EXPECT_EQ(apply("= 5", 5), "(WARN) Invalid keyword in rc file, line 5: ''\n");
    EXPECT_EQ(apply("TMAXX = 5", 6), "(WARN) Invalid keyword in rc file, line 6: 'TMAXX'\n");
    EXPECT_EQ(apply("PRINT_ORD = 0", 7), "(WARN) Invalid keyword in rc file, line 7: 'PRINT_ORD'\n");
}

// Blanks and tabs are all that is stripped: a line with nothing but the carriage return of a foreign line end is not
// empty, and its key is, once white space is dropped.
TEST_F(ResourceLine, OfACarriageReturnAloneHasAnEmptyKey) {
    for (const char* line : {"\r", " \t\r", "\r \t"}) {
        EXPECT_EQ(apply(line, 2), "(WARN) Invalid keyword in rc file, line 2: ''\n");
    }
    EXPECT_EQ(apply("# TMAX = 2\r"), "") << "the comment takes it along";
}

TEST_F(ResourceLine, WithoutAValueIsReported) {
    for (const char* line : {"TMAX=", "tmax", "TMAX = .5", "TMAX := 2", "TMAX = # 2", "TMAX = _2", "TMAX = \r"}) {
        EXPECT_EQ(apply(line), "(WARN) No value set for option 'TMAX' in rc file.\n") << line;
    }
    EXPECT_EQ(apply("GMPWORDSIZE ="), "(WARN) No value set for option 'GMPWORDSIZE' in rc file.\n");
    EXPECT_EQ(settings_.classic.tMax, 1);
}

TEST_F(ResourceLine, EndsItsValueAtTheFirstOtherCharacter) {
    EXPECT_EQ(apply("TMAX = 2.5"), "#(RES_SET) MaxTime = 2\n");
    EXPECT_EQ(settings_.classic.tMax, 2);
    EXPECT_EQ(apply("TMAX = 3\r"), "#(RES_SET) MaxTime = 3\n");
    EXPECT_EQ(settings_.classic.tMax, 3);
    EXPECT_EQ(apply("TMAX = 25e-1 7"), "#(RES_SET) MaxTime = 25e-1\n");
    EXPECT_EQ(settings_.classic.tMax, 2.5L);
    EXPECT_EQ(apply("TMAX = 4=5"), "#(RES_SET) MaxTime = 4\n");
    EXPECT_EQ(apply("ACCURACY = 1e-10"), "#(RES_SET) Accuracy = 1e-10\n");
    EXPECT_EQ(settings_.classic.limits.accuracy, static_cast<real>(1e-10));
    EXPECT_EQ(apply("GNUPLOT_FILENAME = my_run"), "#(RES_SET) GnuPlot File = my\n");
    EXPECT_EQ(settings_.plot.gnuplotFile, "my");
    EXPECT_EQ(apply("TMAX = soon"), "#(RES_SET) MaxTime = soon\n");
    EXPECT_EQ(settings_.classic.tMax, 0) << "text that is not a number";
}

TEST_F(ResourceLine, OfTheWordSizeSetsNothing) {
    EXPECT_EQ(apply("GMPWORDSIZE = 64"),
              "#(WARN) Option 'GMPWordSize' not supported in 'simple number precision' version\n");
}

TEST_F(ResourceLine, SetsFlagsExactlyByOne) {
    struct {
        const char* key;
        bool* field;
        const char* echo;
    } const cases[] = {
        {"PRINTORD", &settings_.layout.printOrderColumn, "Print order = "},
        {"ALL3DVALUES", &settings_.layout.all3DValues, "Print all values (3D) = "},
        {"DUMPTREE", &settings_.dumpTree, "Dump tree = "},
        {"FIXEDSTEP", &settings_.classic.fixedStep, "Fixed int.step = "},
        {"SIMPLIFYSMALLNUMBERS", &settings_.classic.limits.simplifySmall, "Ignore small numbers = "},
        {"PRINTONLYTMAX", &settings_.rows.printOnlyTmax, "Print only Tmax = "},
        {"PRINTTEMPQ", &settings_.layout.printTempEquations, "Print temporary equations = "},
        {"USEALLTERMS", &settings_.classic.limits.useAllTerms, "Use all terms = "},
        {"STIFFDETECTEVERYSTEP", &settings_.classic.stiffness.stiffEveryStep, "Stiff system detected every step  = "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        for (const char* value : {"1", "0", "01", "2", "1x", "yes"}) {
            EXPECT_EQ(apply(std::string(c.key) + "=" + value), "#(RES_SET) " + std::string(c.echo) + value + "\n");
            EXPECT_EQ(*c.field, std::string(value).find('1') != std::string::npos) << value;
        }
    }
}

TEST_F(ResourceLine, SetsIntegers) {
    struct {
        const char* key;
        int* field;
        const char* echo;
    } const cases[] = {
        {"DUMPDY", &settings_.dumpDY, "Dump DY values = "},
        {"PRINTNUMCHARS", &settings_.numbers.printPrecision, "Characters of number to print = "},
        {"PRINTNUMWIDTH", &settings_.numbers.printWidth, "Number digits to print = "},
        {"STIFFSYSTEMDETECTEXPDIFF", &settings_.classic.stiffness.stiffExpDiff,
         "Stiff system detect exponent difference = "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(apply(std::string(c.key) + ": -6"), "#(RES_SET) " + std::string(c.echo) + "-6\n");
        EXPECT_EQ(*c.field, -6);
    }
    EXPECT_EQ(apply("STOPSTEADYSTATE = 5"), "#(RES_SET) Step when steady solution is found = 5\n");
    EXPECT_EQ(settings_.classic.limits.steadyStop, 5U);
}

TEST_F(ResourceLine, SetsReals) {
    EXPECT_EQ(apply("TMAX = 9"), "#(RES_SET) MaxTime = 9\n");
    EXPECT_EQ(settings_.classic.tMax, 9);
    EXPECT_EQ(apply("PRINTEVERYRESULT = -8"), "#(RES_SET) Print every result = -8\n");
    EXPECT_EQ(settings_.rows.printEvery, -8) << "turned into an interval after the options only";
    EXPECT_EQ(apply("INITIALINTSTEP = 3e-1"), "#(RES_SET) Initial step size = 3e-1\n");
    EXPECT_EQ(settings_.classic.step, static_cast<real>(0.3));
}

TEST_F(ResourceLine, OfOrderAndZeroTermsCombinesAsymmetrically) {
    EXPECT_EQ(apply("ZEROTAYLORTERMS = 2"), "#(RES_SET) Number of Taylor terms equal to zero = 2\n");
    EXPECT_EQ(settings_.classic.limits.zeroTerms, 2);
    EXPECT_EQ(settings_.classic.limits.maxOrder, 36);
    EXPECT_EQ(apply("MAXORDER = 10"), "#(RES_SET) MaxOrder = 10\n");
    EXPECT_EQ(settings_.classic.limits.maxOrder, 12);
}

TEST_F(ResourceLine, OfTheTerminalAsksForAScript) {
    EXPECT_EQ(apply("GNUPLOT_FILENAME = Run-2"), "#(RES_SET) GnuPlot File = Run-2\n");
    EXPECT_FALSE(settings_.plot.gnuplotRequested);
    EXPECT_EQ(apply("GNUPLOT_OUTPUT = Png"), "#(RES_SET) GnuPlot Output = Png\n");
    EXPECT_EQ(settings_.layout.gnuplotOutput, "Png");
    EXPECT_TRUE(settings_.plot.gnuplotRequested);
}

TEST(ResourceFile, IsSkippedSilentlyWhenItIsMissing) {
    Settings settings;
    std::ostringstream log;
    readResourceFile("no/such/file", settings, log);
    EXPECT_EQ(log.str(), "");
}

TEST(ResourceFile, WithForeignLineEndsIsReadLineByLine) {
    const std::string path = testing::TempDir() + "foreign-line-ends.zirkrc";
    std::ofstream(path, std::ios::binary) << "TMAX = 3\r\n\r\nMAXORDER = 20\r\n";
    Settings settings;
    settings.reset();
    std::ostringstream log;
    readResourceFile(path, settings, log);
    std::remove(path.c_str());
    EXPECT_EQ(log.str(),
              "#(RES_SET) MaxTime = 3\n"
              "(WARN) Invalid keyword in rc file, line 2: ''\n"
              "#(RES_SET) MaxOrder = 20\n");
}

TEST(ResourceFile, LiesInTheHomeDirectoryOrHere) {
    const char* home = std::getenv("HOME");
    const std::string before = home != nullptr ? home : "";
    setenv("HOME", "/somewhere", 1);
    EXPECT_EQ(resourceFilePath(), "/somewhere/.zirkrc");
    setenv("HOME", "", 1);
    EXPECT_EQ(resourceFilePath(), "/.zirkrc");
    unsetenv("HOME");
    EXPECT_EQ(resourceFilePath(), "./.zirkrc");
    if (home != nullptr) setenv("HOME", before.c_str(), 1);
}

}  // namespace
