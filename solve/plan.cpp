// SPDX-License-Identifier: MIT
// Reading formulas, and the ranges of what they may be.
#include "solve/plan.hpp"

#include <algorithm>
#include <cmath>

#include "solve/failure.hpp"
#include "solve/number.hpp"

namespace zirk::solve {

namespace {

constexpr real leastTolerance = 1e-18L;
constexpr real mostTolerance = 0.1L;
constexpr std::uint64_t defaultRows = 10;
constexpr std::uint64_t mostRows = 1000000000000;
/// Of a picture: enough for every pixel, and for every step as long as there are not too many.
constexpr std::uint64_t defaultPlotRows = 1000;
constexpr unsigned plotRowsPerStep = 32;
constexpr std::uint64_t plotStepsWithRows = 2000;

real readConstant(const Problem& problem, const char* option, const std::string& text) {
    try {
        const real value = problem.constant(text);
        if (std::isfinite(value)) return value;
    } catch (const ParseError& error) {
        throw FormulaError(option, text, error);
    }
    throw UsageError(std::string(option) + ": \"" + text + "\" is not a finite number");
}

real readPositive(const Problem& problem, const char* option, const std::string& text) {
    const real value = readConstant(problem, option, text);
    if (value > 0) return value;
    throw UsageError(std::string(option) + " must be above 0, not \"" + text + '"');
}

Expression readExpression(const Problem& problem, const char* option, const std::string& text) {
    try {
        return problem.expression(text);
    } catch (const ParseError& error) {
        throw FormulaError(option, text, error);
    }
}

std::string numberText(real x) {
    std::string text;
    appendNumber(text, x, 6);
    return text;
}

/// In the order in which a run from `start` meets them.
std::vector<real> listedTimes(const Problem& problem, const std::vector<std::string>& texts) {
    std::vector<real> times;
    for (const std::string& text : texts) times.push_back(readConstant(problem, "--at", text));
    const bool isForward = *std::max_element(times.begin(), times.end()) > problem.start();
    std::sort(times.begin(), times.end(), [&](real a, real b) { return isForward ? a < b : a > b; });
    return times;
}

void checkListed(const std::vector<real>& times, real start, real end) {
    for (const real time : times) {
        if (time >= std::min(start, end) && time <= std::max(start, end)) continue;
        throw UsageError("--at: " + numberText(time) + " lies outside the run from " + numberText(start) + " to " +
                         numberText(end));
    }
}

std::uint64_t evenRows(real start, real end, real spacing) {
    const real count = intervalsOf(start, end, spacing);
    if (count > static_cast<real>(mostRows)) {
        throw UsageError("--every: " + numberText(spacing) + " would make " + numberText(count) + " rows");
    }
    return std::max<std::uint64_t>(static_cast<std::uint64_t>(count), 1);
}

RowPlan plannedRows(const Request& request, const Problem& problem, real end) {
    RowPlan rows;
    if (request.rows) {
        rows.intervals = *request.rows;
    } else if (request.every) {
        rows.spacing = readPositive(problem, "--every", *request.every);
        rows.intervals = evenRows(problem.start(), end, rows.spacing);
    } else if (request.steps) {
        rows.perStep = 1;
    } else if (request.last) {
        rows.listed = {end};
    } else if (request.crossings.empty() && request.plot) {
        rows.intervals = defaultPlotRows;
        rows.perStep = plotRowsPerStep;
        rows.stepsWithRows = plotStepsWithRows;
    } else if (request.crossings.empty()) {
        rows.intervals = defaultRows;
    }
    return rows;
}

}  // namespace

ProblemOptions problemOptions(const Request& request) {
    ProblemOptions options;
    // The time of the start values is needed before there are names.
    if (request.start) options.start = readConstant(Problem::fromText("zero = 0;"), "--start", *request.start);
    options.settings = request.settings;
    return options;
}

RunPlan makePlan(const Request& request, const Problem& problem) {
    RunPlan plan;
    if (request.tolerance) {
        plan.integrator.tolerance = readConstant(problem, "--tolerance", *request.tolerance);
        if (plan.integrator.tolerance < leastTolerance || plan.integrator.tolerance > mostTolerance) {
            throw UsageError("--tolerance must lie between 1e-18 and 0.1, not be \"" + *request.tolerance + '"');
        }
    }
    plan.integrator.threads.most = static_cast<unsigned>(request.threads);
    if (request.maxStep) plan.integrator.maxStep = readPositive(problem, "--max-step", *request.maxStep);

    const real start = problem.start();
    if (request.end) plan.end = readConstant(problem, "--end", *request.end);
    if (request.at) {
        std::vector<real> times = listedTimes(problem, *request.at);
        // Without an end time the last of them ends the run.
        if (!request.end) plan.end = times.back();
        checkListed(times, start, plan.end);
        plan.rows.listed = std::move(times);
    } else {
        plan.rows = plannedRows(request, problem, plan.end);
    }
    if (!std::isfinite(plan.end - start)) throw UsageError("--start and --end are too far apart");

    for (const Watched& w : request.until) {
        plan.watched.emplace_back(readExpression(problem, "--until", w.text), w.which);
    }
    plan.untilCount = plan.watched.size();
    for (const Watched& w : request.crossings) {
        plan.watched.emplace_back(readExpression(problem, "--crossings", w.text), w.which);
    }
    const std::vector<std::string> names = columnNames(request, problem);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const char* option = i == 0 && request.plotX ? "--plot-x" : "--columns";
        plan.columns.push_back(readExpression(problem, option, names[i]));
    }
    return plan;
}

std::vector<std::string> columnNames(const Request& request, const Problem& problem) {
    std::vector<std::string> names;
    if (request.columns) {
        names = *request.columns;
    } else {
        names = problem.names();
        // Along another axis time itself is of no interest.
        if (!request.plotX) names.insert(names.begin(), "t");
    }
    if (request.plotX) {
        names.erase(std::remove(names.begin(), names.end(), *request.plotX), names.end());
        names.insert(names.begin(), *request.plotX);
    }
    if (request.plot && names.size() < 2) throw UsageError("--plot needs a column besides the one along the x axis");
    return names;
}

}  // namespace zirk::solve
