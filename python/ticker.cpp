// SPDX-License-Identifier: MIT
// Signals every time, progress every other time.
#include "python/ticker.hpp"

#include "python/reals.hpp"

namespace zirk::python {

namespace {

constexpr std::chrono::milliseconds interval(50);

}  // namespace

Ticker::Ticker(py::object progress, real start, real end)
    : progress_(std::move(progress)), start_(start), end_(end), due_(Clock::now() + interval) {}

void Ticker::look(real time, std::uint64_t steps) {
    const py::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    isReportDue_ = !isReportDue_;
    if (isReportDue_) report(end_ == start_ ? 1 : (time - start_) / (end_ - start_), time, steps);
    due_ = Clock::now() + interval;
}

void Ticker::report(real share, real time, std::uint64_t steps) {
    if (!progress_.is_none()) progress_(static_cast<double>(share), fromReal(time), steps);
}

void Ticker::finish(real time, std::uint64_t steps) { report(1, time, steps); }

}  // namespace zirk::python
