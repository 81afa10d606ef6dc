// SPDX-License-Identifier: MIT
// The parts of the module zirk._core.
#pragma once

#include <pybind11/pybind11.h>

namespace zirk::python {

void bindProblem(pybind11::module_& module);
void bindRecord(pybind11::module_& module);
void bindIntegrator(pybind11::module_& module);
void bindClassic(pybind11::module_& module);

}  // namespace zirk::python
