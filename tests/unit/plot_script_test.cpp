// SPDX-License-Identifier: MIT
// The script around the table.
#include "report/plot_script.hpp"

#include <gtest/gtest.h>

#include <sstream>

using namespace zirk;

namespace {

class PlotScriptTest : public testing::Test {
protected:
    std::string head(const std::string& model) const {
        std::ostringstream out;
        writePlotHead(out, plot_, layout_, selection_, ClassicIntegrator(Model::fromText(model)));
        return out.str();
    }

    /// The lines from the axes on.
    std::string plotCommands(const std::string& model) const {
        const std::string text = head(model);
        const std::size_t begin = text.find("set xlabel");
        return text.substr(begin, text.find("END_OF_CMDS\ncat") - begin);
    }

    PlotSettings plot_;
    Layout layout_;
    Selection selection_;
};

TEST_F(PlotScriptTest, WritesACommandFileAndADataFile) {
    EXPECT_EQ(head("y' = 1;"),
              "#!/bin/bash\n"
              "# RUN THIS SCRIPT TO GET THE FILES REQUIRED FOR GNUPLOT!!!\n"
              "cat<<END_OF_CMDS > output.p\n"
              "# --8<---file: output.p ----------------------------------\n"
              "# Note: for persistent window in x11 start gnuplot:  gnuplot -persist output.p\n"
              "#\n"
              "#\n"
              "set title \"Output from ZIRK/C\"\n"
              "set xlabel \"Time\"\n"
              "set ylabel \"ORD y\"\n"
              "\n"
              "set term x11\n"
              "plot 'output.dat' using 2:1 title 'ORD' with histeps, \\\n"
              "     'output.dat' using 2:3 title 'y' with lines\n"
              "\n"
              "END_OF_CMDS\n"
              "cat <<END_OF_DATA > output.dat\n"
              "\n"
              "# --8<---file: output.dat ----------------\n");
    std::ostringstream tail;
    writePlotTail(tail, plot_);
    EXPECT_EQ(tail.str(), "\nEND_OF_DATA\n\ngnuplot output.p \n\n");
}

TEST_F(PlotScriptTest, WithoutTheOrderColumnStartsAtColumnTwo) {
    selection_.printList = "a:c:";
    layout_.printOrderColumn = false;
    layout_.gnuplotOutput = "png";
    plot_.gnuplotFile = "run";
    EXPECT_EQ(plotCommands("a = 1; b = 2; c = 3;"),
              "set xlabel \"Time\"\nset ylabel \"a c\"\n\nset term png\nset out \"run.png\"\n\n"
              "plot      'run.dat' using 1:2 title 'a' with lines, \\\n"
              "     'run.dat' using 1:3 title 'c' with lines\n\n");
}

TEST_F(PlotScriptTest, LeavesOutNamesThatBeginWithPercentOnly) {
    const std::string model = "y'' = exp(t);";
    layout_.printOrderColumn = false;
    EXPECT_NE(plotCommands(model).find("\"y y%1\""), std::string::npos);
    layout_.printTempEquations = true;
    EXPECT_NE(plotCommands(model).find("\"%0 y y%1\""), std::string::npos);
}

TEST_F(PlotScriptTest, OfASurfaceReadsTheDataAsAMatrix) {
    const std::string model = "y' = 1;";
    layout_.points3D = 1;
    layout_.gnuplotOutput = "svg";
    const std::string axes =
        "set xlabel \"x\"\nset ylabel \"y\"\nset surface\nset hidden3d\nset contour\nset cntrparam cubicspline\n"
        "set cntrparam levels 16\n\nset term svg\nset out \"output.svg\"\n\n";
    EXPECT_EQ(plotCommands(model), axes + "splot 'output.dat'  matrix with lines\n\n\n");
    layout_.all3DValues = true;
    EXPECT_EQ(plotCommands(model), axes + "\n\n");
}

TEST_F(PlotScriptTest, OnlyTheExactNameX11HasNoOutputFile) {
    layout_.gnuplotOutput = "x11 persist";
    EXPECT_NE(head("y' = 1;").find("set out \"output.x11 persist\"\n"), std::string::npos);
}

}  // namespace
