// SPDX-License-Identifier: MIT
// Errors of the library as exceptions of the package.
#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "zirk/error.hpp"
#include "zirk/problem.hpp"

namespace zirk::python {

namespace py = pybind11;

/// Throws zirk.ParseError; `source` is the text that the place belongs to.
[[noreturn]] void raiseParseError(const ParseError& error, const std::string& source);

/// Throws zirk.RunError, with a part of the solution or None.
[[noreturn]] void raiseRunError(const RunError& error, const py::object& solution);

/// What the function returns, with errors in `source` told as such.
template <class Function>
auto reading(const std::string& source, Function function) {
    try {
        return function();
    } catch (const ParseError& error) {
        raiseParseError(error, source);
    }
}

/// A formula of a problem.
Expression expressionOf(const Problem& problem, const std::string& text);

}  // namespace zirk::python
