// SPDX-License-Identifier: MIT
// The one record of settings, composed of the slices that the folders read.
#pragma once

#include <string>

#include "classic/step_control.hpp"
#include "classic/stiffness.hpp"
#include "classic/stop_tests.hpp"
#include "expr/calculus.hpp"
#include "lang/equation_table.hpp"
#include "report/layout.hpp"
#include "report/plot_script.hpp"
#include "report/result_table.hpp"

namespace zirk {

/// All settings and shared state under their names; each base says what its fields mean.
struct Settings : Calculus,
                  Selection,
                  EquationSystem,
                  Layout,
                  NumberSettings,
                  StepSettings,
                  StiffnessSettings,
                  PeriodSettings,
                  PlotSettings {
    bool printOnlyTmax = false;
    bool dumpTree = false;
    /// Bit 0: Taylor terms; bit 1: derivatives.
    int dumpDY = 0;

    /// The order limit N makes N + zeroTerms terms.
    void setOrder(int n) { setMaxOrder(saturatingSum(n, zeroTerms)); }

    /// On top of a limit that contains the old number of zero terms already, on purpose.
    void setZeroTerms(int n) {
        zeroTerms = n;
        setMaxOrder(saturatingSum(n, maxOrder));
    }

    void setPlotTerminal(const std::string& terminal) {
        gnuplotOutput = terminal;
        gnuplotRequested = true;
    }

    /// What every run starts from, before the resource file.
    void reset() {
        setMaxOrder(zeroTerms + 30);
        accuracy = realFromText("1e-10");
    }
};

/// The record of the process; made before `main` and never freed.
Settings& settings();

}  // namespace zirk
