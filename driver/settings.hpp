// SPDX-License-Identifier: MIT
// The one record of settings of the command, composed of what its parts read.
#pragma once

#include <string>

#include "report/layout.hpp"
#include "report/plot_script.hpp"
#include "zirk/classic_options.hpp"

namespace zirk {

/// Which points become rows.
struct RowSettings {
    /// 0: every point; x > 0: the first point behind every multiple of x; -n, until the end time is known: n rows.
    real printEvery = 0;
    bool printOnlyTmax = false;
};

/// All settings of one run of the command; each part says what its fields mean.
struct Settings {
    Settings() { classic.limits.maxOrder = 15; }

    ClassicOptions classic;
    Selection selection;
    Layout layout;
    NumberFormat numbers;
    PlotSettings plot;
    RowSettings rows;
    bool dumpTree = false;
    /// Bit 0: Taylor terms; bit 1: derivatives.
    int dumpDY = 0;

    void setPlotTerminal(const std::string& terminal) {
        layout.gnuplotOutput = terminal;
        plot.gnuplotRequested = true;
    }

    /// Limit and accuracy that every run starts from, before the resource file.
    void reset() {
        classic.limits.maxOrder = classic.limits.zeroTerms + 30;
        classic.limits.accuracy = 1e-10;
    }
};

}  // namespace zirk
