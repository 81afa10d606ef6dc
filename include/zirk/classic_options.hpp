// SPDX-License-Identifier: MIT
// What can be chosen about a run by the classic rules.
#pragma once

#include <string>

#include "zirk/real.hpp"
#include "zirk/threads.hpp"

namespace zirk {

/// How long series may be, and what counts as nothing. Constant over a run; formulas are folded by it too.
struct [[gnu::visibility("default")]] SeriesLimits {
    /// A number of terms, in spite of its name: those that a series may have, which are the order limit (30) and the
    /// trailing negligible ones.
    int maxOrder = 34;
    /// Negligible terms in a row that end a sum.
    int zeroTerms = 4;
    /// A term is negligible below this times the sum so far; a constant below it counts as zero. The nearest double to
    /// 1e-10 unless set.
    real accuracy = 1e-10;
    /// Always sums as many terms as allowed.
    bool useAllTerms = false;
    /// Constants below the accuracy vanish from formulas, and factors that near to 1.
    bool simplifySmall = true;
    /// Points in a row at which nothing moved by the accuracy that end the run; 0: they do not, and nobody looks.
    unsigned steadyStop = 0;

    /// The order limit N makes N + zeroTerms terms.
    void setOrder(int n);

    /// On top of a limit that contains the old number of zero terms already, on purpose.
    void setZeroTerms(int n);
};

/// When the last terms of the variables lie so far apart that the system is called stiff.
struct StiffnessOptions {
    /// Most binary orders of magnitude that are not stiff.
    int stiffExpDiff = 20;
    /// Tests after every point, also when the system is known to be stiff and the step has not changed.
    bool stiffEveryStep = false;
};

/// Ends the run when one variable has met each of its turning points equally often.
struct PeriodOptions {
    /// The variable that is watched: its turning points are where its right-hand side is about 0. A definition takes
    /// its own value for that; so it is watched where it is about 0 itself.
    std::string periodicName;
    /// On when greater than 0; its size does not matter.
    int periodicCount = 0;
    /// Not used by any rule.
    real periodicDeriv = 0;
    /// Turning points that are remembered, plus one.
    int periodicBuffer = 50;
};

/// One run by the classic rules; times and steps are in units of t.
struct ClassicOptions {
    SeriesLimits limits;
    /// First step; the nearest double to 0.1 unless set.
    real step = 0.1;
    /// The step never changes but for the last one.
    bool fixedStep = false;
    real tMax = 1;
    StiffnessOptions stiffness;
    PeriodOptions period;
    ThreadOptions threads = {};
};

}  // namespace zirk
