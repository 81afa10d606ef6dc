// SPDX-License-Identifier: MIT
// Statistics in words.
#include "solve/summary.hpp"

#include <cstdio>

#include "solve/number.hpp"

namespace zirk::solve {

std::string summaryText(const IntegratorStatistics& statistics, double seconds) {
    char order[32];
    const double steps = static_cast<double>(statistics.steps);
    std::snprintf(order, sizeof order, "%.1f", steps > 0 ? static_cast<double>(statistics.orders) / steps : 0.0);
    char time[32];
    std::snprintf(time, sizeof time, "%.3f", seconds);
    std::string text = std::to_string(statistics.steps) + " steps of mean order " + order + ", " +
                       std::to_string(statistics.repeated) + " repeated, " + std::to_string(statistics.jumps) +
                       " ended by jumps\nlengths from ";
    appendNumber(text, statistics.shortestStep, 3);
    text += " to ";
    appendNumber(text, statistics.longestStep, 3);
    return text + "; " + time + " s\n";
}

}  // namespace zirk::solve
