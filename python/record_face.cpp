// SPDX-License-Identifier: MIT
// Runs, and what they leave behind.
#include <pybind11/stl.h>

#include <algorithm>

#include "python/bindings.hpp"
#include "python/errors.hpp"
#include "python/reals.hpp"
#include "python/record.hpp"

namespace zirk::python {

namespace {

using Watched = std::vector<std::pair<std::string, int>>;

/// The values of formulas at any times of the polynomials, a row for each formula.
std::vector<real> evaluated(const Record& record, const std::vector<std::string>& formulas,
                            const std::vector<real>& times) {
    std::vector<Expression> expressions;
    for (const std::string& formula : formulas) expressions.push_back(expressionOf(record.problem, formula));
    if (!record.dense) throw py::value_error("only names at rows are known without dense=True");
    for (const real time : times) {
        if (record.contains(time)) continue;
        throw py::value_error("t = " + std::string(py::str(fromReal(time))) + " lies outside of the solution, from " +
                              std::string(py::str(fromReal(record.problem.start()))) + " to " +
                              std::string(py::str(fromReal(record.end))));
    }
    const std::size_t width = formulas.size();
    std::vector<real> values(times.size() * width);
    const py::gil_scoped_release unlocked;
    Readout readout(record.problem, expressions);
    if (width == 1) {
        record.dense->read(readout, times.data(), times.size(), values.data());
        return values;
    }
    std::vector<real> row(width);
    for (std::size_t i = 0; i < times.size(); ++i) {
        record.dense->read(readout, &times[i], 1, row.data());
        for (std::size_t j = 0; j < width; ++j) values[j * times.size() + i] = row[j];
    }
    return values;
}

/// The column of a name or of another formula, which is computed when it is asked for first.
const std::vector<real>& columnOf(const Record& record, Table& table, const std::string& formula) {
    const std::vector<std::string>& names = record.problem.names();
    const auto name = std::find(names.begin(), names.end(), formula);
    if (name != names.end()) return table.columns[static_cast<std::size_t>(name - names.begin())];
    if (formula == "t") return table.times;
    const auto known = table.formulas.find(formula);
    if (known != table.formulas.end()) return known->second;
    // Another thread may have done the same by then; the first entry stays.
    return table.formulas.emplace(formula, evaluated(record, {formula}, table.times)).first->second;
}

std::vector<real> timesOf(const RealArray& times) { return {times.data(), times.data() + times.size()}; }

py::object evaluate(const Record& record, const py::object& times, const py::object& formula) {
    const RealArray array = RealArray::ensure(times);
    if (!array) throw py::error_already_set();
    const bool isOne = py::isinstance<py::str>(formula);
    std::vector<py::ssize_t> shape(array.shape(), array.shape() + array.ndim());
    std::vector<std::string> formulas;
    if (isOne) {
        formulas.push_back(formula.cast<std::string>());
    } else {
        formulas = formula.is_none() ? record.problem.names() : formula.cast<std::vector<std::string>>();
        shape.insert(shape.begin(), static_cast<py::ssize_t>(formulas.size()));
    }
    std::vector<real> values = evaluated(record, formulas, timesOf(array));
    if (shape.empty()) return fromReal(values[0]);
    return ownArray(std::move(values), shape);
}

void checkListed(const std::vector<real>& times, real start, real end) {
    real before = start;
    const bool isForward = end >= start;
    for (const real time : times) {
        const bool isInside = isForward ? time >= start && time <= end : time <= start && time >= end;
        const bool goesOn = isForward ? time >= before : time <= before;
        before = time;
        if (isInside && goesOn) continue;
        const std::string run =
            "the run from " + std::string(py::str(fromReal(start))) + " to " + std::string(py::str(fromReal(end)));
        if (!isInside) throw py::value_error("at has times outside of " + run);
        throw py::value_error("the times of at must be in the order of " + run);
    }
}

RunPlan makePlan(const Problem& problem, py::handle end, const py::object& listed, std::uint64_t intervals,
                 py::handle spacing, const Watched& until, const Watched& crossings, py::handle tolerance,
                 py::handle maxStep, bool isDense) {
    RunPlan plan;
    plan.end = toReal(end);
    if (!listed.is_none()) {
        plan.rows.listed = numbersOf(listed.cast<RealArray>());
        checkListed(*plan.rows.listed, problem.start(), plan.end);
    }
    plan.rows.intervals = intervals;
    plan.rows.spacing = toReal(spacing);
    plan.integrator.tolerance = toReal(tolerance);
    plan.integrator.maxStep = toReal(maxStep);
    plan.isDense = isDense;
    for (const Watched* watched : {&until, &crossings}) {
        for (const auto& [text, which] : *watched) {
            plan.watched.emplace_back(expressionOf(problem, text), static_cast<Crossing>(which));
        }
    }
    plan.untilCount = until.size();
    return plan;
}

/// The record, and None or what ended the run early: message, time, formula.
py::tuple solveProblem(const Problem& problem, py::handle end, const py::object& listed, std::uint64_t intervals,
                       py::handle spacing, const Watched& until, const Watched& crossings, py::handle tolerance,
                       py::handle maxStep, bool isDense, const py::object& progress) {
    const RunPlan plan =
        makePlan(problem, end, listed, intervals, spacing, until, crossings, tolerance, maxStep, isDense);
    auto record = std::make_shared<Record>(problem);
    Ticker ticker(progress, problem.start(), plan.end);
    try {
        const py::gil_scoped_release unlocked;
        solve(plan, *record, ticker);
    } catch (const RunError& error) {
        return py::make_tuple(record, py::make_tuple(error.what(), fromReal(error.time()), error.expression()));
    }
    ticker.finish(record->end, record->statistics.steps);
    return py::make_tuple(record, py::none());
}

py::tuple statisticsOf(const Record& record) {
    const IntegratorStatistics& s = record.statistics;
    const double order = s.steps == 0 ? 0 : static_cast<double>(s.orders) / static_cast<double>(s.steps);
    return py::make_tuple(s.steps, s.repeated, s.jumps, order, fromReal(s.shortestStep), fromReal(s.longestStep),
                          record.seconds);
}

py::tuple stateOfTable(const Table& table) {
    py::list columns;
    for (const std::vector<real>& column : table.columns)
        columns.append(ownArray(column, {py::ssize_t(column.size())}));
    return py::make_tuple(ownArray(table.times, {py::ssize_t(table.times.size())}), columns);
}

Table tableFromState(const py::tuple& state, std::size_t columns) {
    Table table;
    table.times = numbersOf(state[0].cast<RealArray>());
    for (const py::handle column : state[1].cast<py::list>()) {
        table.columns.push_back(numbersOf(column.cast<RealArray>()));
        if (table.columns.back().size() != table.times.size()) throw py::value_error("columns of different lengths");
    }
    if (table.columns.size() != columns) throw py::value_error("a column for each name is wanted");
    return table;
}

py::tuple stateOf(const Record& record) {
    const IntegratorStatistics& s = record.statistics;
    const py::object dense = record.dense ? py::object(py::bytes(record.dense->bytes())) : py::none();
    return py::make_tuple(
        dense, stateOfTable(record.rows), stateOfTable(record.events), record.watched, record.rising, record.endedBy,
        fromReal(record.end),
        py::make_tuple(s.steps, s.repeated, s.jumps, s.orders, fromReal(s.shortestStep), fromReal(s.longestStep)),
        record.seconds);
}

std::shared_ptr<Record> recordFromState(const Problem& problem, const py::tuple& state, std::uint32_t watched) {
    auto record = std::make_shared<Record>(problem);
    const std::size_t columns = problem.names().size();
    if (!state[0].is_none()) record->dense = Solution::restored(problem, std::string(state[0].cast<py::bytes>()));
    record->rows = tableFromState(state[1], columns);
    record->events = tableFromState(state[2], columns);
    record->watched = state[3].cast<std::vector<std::uint32_t>>();
    record->rising = state[4].cast<std::vector<bool>>();
    if (record->watched.size() != record->events.times.size() || record->rising.size() != record->watched.size()) {
        throw py::value_error("events of different numbers");
    }
    record->endedBy = state[5].cast<std::int64_t>();
    if (std::any_of(record->watched.begin(), record->watched.end(), [&](std::uint32_t i) { return i >= watched; }) ||
        record->endedBy >= static_cast<std::int64_t>(watched)) {
        throw py::value_error("events of expressions that are not there");
    }
    record->end = toReal(state[6]);
    if (record->dense && !record->dense->contains(record->end)) throw py::value_error("an end that is not there");
    const py::tuple s = state[7];
    record->statistics = {s[0].cast<std::uint64_t>(),
                          s[1].cast<std::uint64_t>(),
                          s[2].cast<std::uint64_t>(),
                          s[3].cast<std::uint64_t>(),
                          toReal(s[4]),
                          toReal(s[5])};
    record->seconds = state[8].cast<double>();
    return record;
}

/// The arrays of a table share its numbers and keep the record alive.
py::array shared(const py::object& self, Table Record::*table, const py::object& formula) {
    auto& record = self.cast<Record&>();
    if (formula.is_none()) return sharedArray((record.*table).times, self);
    return sharedArray(columnOf(record, record.*table, formula.cast<std::string>()), self);
}

}  // namespace

void bindRecord(py::module_& module) {
    py::class_<Record, std::shared_ptr<Record>>(module, "Record")
        .def("rows",
             [](const py::object& self, const py::object& formula) { return shared(self, &Record::rows, formula); })
        .def("events",
             [](const py::object& self, const py::object& formula) { return shared(self, &Record::events, formula); })
        .def_readonly("watched", &Record::watched)
        .def_readonly("rising", &Record::rising)
        .def_readonly("ended_by", &Record::endedBy)
        .def_property_readonly("end", [](const Record& record) { return fromReal(record.end); })
        .def_property_readonly("is_dense", [](const Record& record) { return record.dense.has_value(); })
        .def("statistics", &statisticsOf)
        .def("evaluate", &evaluate)
        .def("state", &stateOf);
    module.def("record_from_state", &recordFromState);
    module.def("solve", &solveProblem);
}

}  // namespace zirk::python
