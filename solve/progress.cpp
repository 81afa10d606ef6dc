// SPDX-License-Identifier: MIT
// Shares, estimates, and when they are shown.
#include "solve/progress.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "solve/number.hpp"
#include "solve/signals.hpp"

namespace zirk::solve {

namespace {

constexpr double firstShown = 1;
constexpr double interval = 0.2;

/// Seconds of a clock that costs next to nothing to read.
double now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

std::string counted(long long count, const char* unit) { return std::to_string(count) + ' ' + unit; }

}  // namespace

std::string durationText(double seconds) {
    constexpr double tooLong = 1e9;
    if (!(seconds < tooLong)) return "many years";
    const long long s = std::llround(std::max(seconds, 0.0));
    if (s < 60) return counted(s, "s");
    if (s < 3600) return counted(s / 60, "min ") + counted(s % 60, "s");
    if (s < 86400) return counted(s / 3600, "h ") + counted(s / 60 % 60, "min");
    return counted(s / 86400, "d ") + counted(s / 3600 % 24, "h");
}

std::string progressText(real share, real time, std::uint64_t steps, double seconds) {
    char percent[32];
    std::snprintf(percent, sizeof percent, "%.0Lf", std::floor(100 * share));
    std::string text = percent + std::string("% of the time, t = ");
    appendNumber(text, time, 6);
    text += ", " + std::to_string(steps) + (steps == 1 ? " step" : " steps");
    if (share > 0 && seconds >= firstShown) {
        text += ", about " + durationText(seconds * static_cast<double>((1 - share) / share)) + " left";
    }
    return text;
}

Progress::Progress(Output& output, const Integrator& integrator, real end, bool isShown)
    : output_(output),
      integrator_(integrator),
      start_(integrator.time()),
      end_(end),
      isShown_(isShown),
      begin_(now()),
      due_(begin_ + firstShown) {}

double Progress::seconds() const { return now() - begin_; }

std::string Progress::text() const {
    const real time = integrator_.time();
    const real share = end_ == start_ ? 1 : (time - start_) / (end_ - start_);
    return progressText(share, time, integrator_.statistics().steps, seconds());
}

void Progress::tick() {
    if (isAsked()) {
        hide();
        output_.log() << text() << '\n';
        output_.flush();
    }
    if (!isShown_) return;
    const double time = now();
    if (time < due_) return;
    due_ = time + interval;
    // Back to the begin of the line, and nothing is left behind its end.
    output_.log() << '\r' << text() << "\033[K";
    output_.flush();
    isVisible_ = true;
}

void Progress::hide() {
    if (!isVisible_) return;
    isVisible_ = false;
    output_.log() << "\r\033[K";
    output_.flushQuietly();
}

}  // namespace zirk::solve
