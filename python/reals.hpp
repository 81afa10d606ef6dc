// SPDX-License-Identifier: MIT
// Numbers between Python and the library, with all their bits.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <string>
#include <vector>

#include "zirk/real.hpp"

namespace zirk::python {

namespace py = pybind11;

using RealArray = py::array_t<real, py::array::c_style | py::array::forcecast>;

/// Of an int, a float, or a real number of numpy. TypeError for anything else.
real toReal(py::handle number);

/// A numpy.longdouble.
py::object fromReal(real x);

/// Shares the numbers, read-only; they must live as long as `owner` and stay where they are.
py::array sharedArray(const std::vector<real>& numbers, py::handle owner);

/// A fresh array that takes the numbers over.
py::array ownArray(std::vector<real> numbers, const std::vector<py::ssize_t>& shape);

/// The numbers of an array of one dimension.
std::vector<real> numbersOf(const RealArray& array);

/// A constant of the language that reads back as the same bits. ValueError for what is not finite.
std::string constantText(real x);

}  // namespace zirk::python
