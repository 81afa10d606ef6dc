// SPDX-License-Identifier: MIT
// The line that tells how far a run has come.
#pragma once

#include <string>

#include "command/output.hpp"
#include "zirk/integrator.hpp"

namespace zirk::solve {

/// "42% of the time, t = 4.2, 1234 steps, about 3 s left"; `seconds`: how long it took to come there.
std::string progressText(real share, real time, std::uint64_t steps, double seconds);

/// "3 s", "5 min 20 s", "7 h 12 min", "3 d 4 h".
std::string durationText(double seconds);

/// Writes the line on the terminal from the first second on, about five times a second, and on request anywhere.
class Progress {
public:
    /// `isShown`: somebody watches.
    Progress(Output& output, const Integrator& integrator, real end, bool isShown);
    ~Progress() { hide(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Between steps, and between rows.
    void tick();

    /// Takes the line away, so that something else can be written.
    void hide();

    double seconds() const;

private:
    std::string text() const;

    Output& output_;
    const Integrator& integrator_;
    const real start_;
    const real end_;
    const bool isShown_;
    const double begin_;
    double due_;
    bool isVisible_ = false;
};

}  // namespace zirk::solve
