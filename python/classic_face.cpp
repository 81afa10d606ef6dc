// SPDX-License-Identifier: MIT
// Runs by the rules of the command zirk, and the points that it would show.
#include <pybind11/stl.h>

#include <cmath>

#include "python/bindings.hpp"
#include "python/errors.hpp"
#include "python/reals.hpp"
#include "python/ticker.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk::python {

namespace {

/// Which points become rows, as the options F and L say.
struct ClassicRows {
    real every = 0;
    bool onlyLast = false;
};

struct ClassicTable {
    std::vector<std::string> names;
    std::vector<real> times;
    std::vector<std::int64_t> orders;
    std::vector<std::vector<real>> columns;
    std::vector<std::string> remarks;
    ClassicStatistics statistics;
};

/// By the keys of the options, in their order; the letters of the command.
ClassicOptions optionsFrom(const py::list& items, ClassicRows& rows) {
    ClassicOptions options;
    for (const py::handle item : items) {
        const auto pair = item.cast<py::tuple>();
        const char letter = pair[0].cast<std::string>()[0];
        const py::object value = pair[1];
        const auto number = [&] { return value.cast<double>(); };
        const auto integer = [&] { return value.cast<int>(); };
        const auto flag = [&] { return value.cast<int>() == 1; };
        switch (letter) {
            case 'a':
                options.limits.accuracy = number();
                break;
            case 'f':
                options.fixedStep = flag();
                break;
            case 'F':
                rows.every = number();
                break;
            case 'i':
                options.limits.simplifySmall = flag();
                break;
            case 'L':
                rows.onlyLast = flag();
                break;
            case 'o':
                options.limits.setOrder(integer());
                break;
            case 'r': {
                const auto period = value.cast<py::tuple>();
                options.period.periodicName = period[0].cast<std::string>();
                options.period.periodicCount = period[1].cast<int>();
                options.period.periodicDeriv = period[2].cast<double>();
                break;
            }
            case 'R':
                options.period.periodicBuffer = integer();
                break;
            case 's':
                options.step = number();
                break;
            case 'S':
                options.limits.steadyStop = static_cast<unsigned>(integer());
                break;
            case 't':
                options.tMax = number();
                break;
            case 'U':
                options.limits.useAllTerms = flag();
                break;
            case 'x':
                options.stiffness.stiffExpDiff = integer();
                break;
            case 'X':
                options.stiffness.stiffEveryStep = flag();
                break;
            case 'z':
                options.limits.setZeroTerms(integer());
                break;
            default:
                throw py::value_error(std::string("no option -") + letter);
        }
    }
    if (rows.every < 0) rows.every = options.tMax / -rows.every;
    return options;
}

class ClassicRun {
public:
    ClassicRun(const Model& model, const ClassicOptions& options, const ClassicRows& rows, ClassicTable& table,
               Ticker& ticker)
        : rows_(rows), table_(table), ticker_(ticker), run_(model, options) {
        for (std::size_t i = 0; i < run_.size(); ++i) table.names.push_back(run_.name(i));
        table.columns.resize(run_.size());
        table.remarks = run_.remarks();
    }

    void solve() {
        using Pass = ClassicIntegrator::Pass;
        for (Pass pass = run_.next(); pass != Pass::End; pass = run_.next()) {
            if (pass == Pass::Point && isDue()) {
                next_ = next_ + rows_.every;
                if (!rows_.onlyLast) addRow();
            }
            ticker_.tick(run_.time(), static_cast<std::uint64_t>(run_.statistics().points));
        }
        if (rows_.onlyLast) addRow();
        table_.statistics = run_.statistics();
    }

private:
    bool isDue() const {
        if (rows_.every == 0 || run_.isLastStep()) return true;
        return run_.time() > next_ || run_.statistics().points == 1;
    }

    void addRow() {
        table_.times.push_back(run_.time());
        table_.orders.push_back(run_.order());
        for (std::size_t i = 0; i < run_.size(); ++i) table_.columns[i].push_back(run_.value(i));
    }

    const ClassicRows& rows_;
    ClassicTable& table_;
    Ticker& ticker_;
    ClassicIntegrator run_;
    real next_ = 0;
};

/// The table, and None or what ended the run early: message, time.
py::tuple solveClassic(const std::string& text, const py::list& items) {
    ClassicRows rows;
    const ClassicOptions options = optionsFrom(items, rows);
    auto table = std::make_shared<ClassicTable>();
    Ticker ticker(py::none(), 0, options.tMax);
    try {
        const py::gil_scoped_release unlocked;
        const Model model = Model::fromText(text, options.limits);
        ClassicRun(model, options, rows, *table, ticker).solve();
    } catch (const ParseError& error) {
        raiseParseError(error, text);
    } catch (const RunError& error) {
        return py::make_tuple(table, py::make_tuple(error.what(), fromReal(error.time())));
    }
    return py::make_tuple(table, py::none());
}

}  // namespace

void bindClassic(py::module_& module) {
    py::class_<ClassicTable, std::shared_ptr<ClassicTable>>(module, "ClassicTable")
        .def_readonly("names", &ClassicTable::names)
        .def_readonly("orders", &ClassicTable::orders)
        .def_readonly("remarks", &ClassicTable::remarks)
        .def_property_readonly("points", [](const ClassicTable& table) { return table.statistics.points; })
        .def_property_readonly("rejected", [](const ClassicTable& table) { return table.statistics.rejected; })
        .def("times", [](const py::object& self) { return sharedArray(self.cast<ClassicTable&>().times, self); })
        .def("column", [](const py::object& self, std::size_t i) {
            return sharedArray(self.cast<ClassicTable&>().columns.at(i), self);
        });
    module.def("classic", &solveClassic);
}

}  // namespace zirk::python
