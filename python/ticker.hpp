// SPDX-License-Identifier: MIT
// What Python wants from a computation that holds no lock: to be asked for signals, and told how far it is.
#pragma once

#include <pybind11/pybind11.h>

#include <chrono>
#include <cstdint>

#include "zirk/real.hpp"

namespace zirk::python {

namespace py = pybind11;

/// Takes the lock for a moment every 50 ms, for signals and for the progress callback; an exception from either goes
/// through and ends the computation.
class Ticker {
public:
    /// `progress`: None, or a callable (share, t, steps), which is called about ten times a second and by finish().
    Ticker(py::object progress, real start, real end);

    /// Often; without the lock.
    void tick(real time, std::uint64_t steps) {
        if (Clock::now() >= due_) look(time, steps);
    }
    /// With the lock.
    void finish(real time, std::uint64_t steps);

private:
    using Clock = std::chrono::steady_clock;

    void look(real time, std::uint64_t steps);
    void report(real share, real time, std::uint64_t steps);

    py::object progress_;
    real start_;
    real end_;
    Clock::time_point due_;
    bool isReportDue_ = false;
};

}  // namespace zirk::python
