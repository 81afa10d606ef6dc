// SPDX-License-Identifier: MIT
// The module zirk._core; what users see is written in Python on top of it.
#include "python/bindings.hpp"
#include "zirk/error.hpp"

PYBIND11_MODULE(_core, module) {
    // What is neither a text nor a run; those have translations of their own.
    pybind11::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown) std::rethrow_exception(thrown);
        } catch (const zirk::Error& error) {
            const pybind11::object type = pybind11::module_::import("zirk._errors").attr("Error");
            PyErr_SetString(type.ptr(), error.what());
        }
    });
    module.attr("version") = ZIRK_VERSION;
    zirk::python::bindProblem(module);
    zirk::python::bindRecord(module);
    zirk::python::bindIntegrator(module);
    zirk::python::bindClassic(module);
}
