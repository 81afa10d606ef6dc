// SPDX-License-Identifier: MIT
// The exceptions themselves are written in Python.
#include "python/errors.hpp"

#include "python/reals.hpp"

namespace zirk::python {

namespace {

[[noreturn]] void raise(const char* type, const py::tuple& arguments) {
    const py::object exception = py::module_::import("zirk._errors").attr(type)(*arguments);
    PyErr_SetObject(py::type::of(exception).ptr(), exception.ptr());
    throw py::error_already_set();
}

}  // namespace

void raiseParseError(const ParseError& error, const std::string& source) {
    raise("ParseError", py::make_tuple(error.what(), error.line(), error.column(), error.token(), source));
}

void raiseRunError(const RunError& error, const py::object& solution) {
    raise("RunError", py::make_tuple(error.what(), fromReal(error.time()), error.expression(), solution));
}

Expression expressionOf(const Problem& problem, const std::string& text) {
    return reading(text, [&] { return problem.expression(text); });
}

}  // namespace zirk::python
