// SPDX-License-Identifier: MIT
// pybind11 itself would take numbers through a double.
#include "python/reals.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zirk::python {

namespace {

real fromInt(py::handle number) {
    int overflow = 0;
    const long long value = PyLong_AsLongLongAndOverflow(number.ptr(), &overflow);
    if (overflow == 0) return static_cast<real>(value);
    // Hexadecimal: any length is converted in linear time, and there is no limit to it.
    const py::str digits(py::reinterpret_steal<py::object>(PyNumber_ToBase(number.ptr(), 16)));
    const real x = std::strtold(std::string(digits).c_str(), nullptr);
    if (!std::isfinite(x)) throw py::value_error("an int beyond all numbers with 64 bits");
    return x;
}

}  // namespace

real toReal(py::handle number) {
    if (PyFloat_Check(number.ptr()) != 0) return PyFloat_AS_DOUBLE(number.ptr());
    if (PyLong_Check(number.ptr()) != 0) return fromInt(number);
    if (py::hasattr(number, "dtype")) {
        const std::string kind = py::str(number.attr("dtype").attr("kind"));
        const RealArray array = kind == "f" || kind == "i" || kind == "u" ? RealArray::ensure(number) : RealArray();
        if (array && array.size() == 1) return array.data()[0];
    } else if (PyIndex_Check(number.ptr()) != 0) {
        return fromInt(py::reinterpret_steal<py::object>(PyNumber_Index(number.ptr())));
    }
    throw py::type_error("a real number is wanted, not " + std::string(py::repr(number)));
}

py::object fromReal(real x) { return RealArray(std::vector<py::ssize_t>{}, &x)[py::tuple()]; }

py::array sharedArray(const std::vector<real>& numbers, py::handle owner) {
    py::array array(py::dtype::of<real>(), {numbers.size()}, {sizeof(real)}, numbers.data(), owner);
    array.attr("flags").attr("writeable") = false;
    return array;
}

py::array ownArray(std::vector<real> numbers, const std::vector<py::ssize_t>& shape) {
    auto* kept = new std::vector<real>(std::move(numbers));
    const py::capsule owner(kept, [](void* p) { delete static_cast<std::vector<real>*>(p); });
    return RealArray(shape, kept->data(), owner);
}

std::vector<real> numbersOf(const RealArray& array) {
    if (array.ndim() != 1) throw py::value_error("an array of one dimension is wanted");
    return std::vector<real>(array.data(), array.data() + array.size());
}

std::string constantText(real x) {
    if (!std::isfinite(x)) throw py::value_error("a finite number is wanted");
    char text[64];
    std::snprintf(text, sizeof text, "%.20Le", x);
    std::string constant = text;
    // The decimal point is whatever the locale of the program says.
    const std::size_t point = constant.find_first_not_of("-0123456789");
    constant[point] = '.';
    return constant;
}

}  // namespace zirk::python
