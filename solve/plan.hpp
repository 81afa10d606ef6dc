// SPDX-License-Identifier: MIT
// From formulas on the command line to numbers and expressions of a problem.
#pragma once

#include <string>
#include <vector>

#include "solve/request.hpp"
#include "solve/run.hpp"

namespace zirk::solve {

/// What --start and --set say. FormulaError or UsageError where they cannot be read.
ProblemOptions problemOptions(const Request& request);

/// Everything else, for a problem. FormulaError or UsageError where that cannot be read or is out of range.
RunPlan makePlan(const Request& request, const Problem& problem);

/// Headings of the columns of a plan; a plot has the quantity along its x axis first.
std::vector<std::string> columnNames(const Request& request, const Problem& problem);

}  // namespace zirk::solve
