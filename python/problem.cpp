// SPDX-License-Identifier: MIT
// Problems, and numbers on their way to them.
#include "zirk/problem.hpp"

#include <pybind11/stl.h>

#include "python/bindings.hpp"
#include "python/errors.hpp"
#include "python/reals.hpp"

namespace zirk::python {

namespace {

using Settings = std::vector<std::pair<std::string, std::string>>;

Problem makeProblem(const std::string& text, py::handle start, const Settings& settings) {
    ProblemOptions options;
    options.start = toReal(start);
    for (const auto& [name, value] : settings) options.settings.push_back({name, value});
    return reading(text, [&] {
        const py::gil_scoped_release unlocked;
        return Problem::fromText(text, options);
    });
}

/// (name, value) of all names that stand for constants.
py::list constants(const Problem& problem) {
    py::list found;
    for (const std::string& name : problem.names()) {
        try {
            found.append(py::make_tuple(name, fromReal(problem.constant(name))));
        } catch (const ParseError&) {
            // It changes with time.
        }
    }
    return found;
}

}  // namespace

void bindProblem(py::module_& module) {
    py::class_<Problem>(module, "Problem")
        .def(py::init(&makeProblem))
        .def_property_readonly("names", &Problem::names)
        .def_property_readonly("start", [](const Problem& problem) { return fromReal(problem.start()); })
        .def("constants", &constants)
        .def("constant",
             [](const Problem& problem, const std::string& text) {
                 return fromReal(reading(text, [&] { return problem.constant(text); }));
             })
        .def("explain", &Problem::explain);
    module.def("real", [](py::handle number) { return fromReal(toReal(number)); });
    module.def("constant_text", [](py::handle number) { return constantText(toReal(number)); });
}

}  // namespace zirk::python
