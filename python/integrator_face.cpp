// SPDX-License-Identifier: MIT
// Runs step by step.
#include <pybind11/stl.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "python/bindings.hpp"
#include "python/errors.hpp"
#include "python/reals.hpp"
#include "python/ticker.hpp"
#include "zirk/integrator.hpp"

namespace zirk::python {

namespace {

class Stepper {
public:
    Stepper(const Problem& problem, py::handle tolerance, py::handle maxStep)
        : problem_(problem), run_(problem, IntegratorOptions{toReal(tolerance), toReal(maxStep), false}) {}

    std::size_t watch(const std::string& text, int which) {
        const InUse use(*this);
        return run_.watch(expressionOf(problem_, text), static_cast<Crossing>(which));
    }

    /// Without an end, as far forwards as the step wants to go.
    bool step(const py::object& end) {
        const InUse use(*this);
        const real target = end.is_none() ? farther() : finite(toReal(end));
        return guarded([&] { return run_.step(target); });
    }

    void integrateTo(py::handle end, const py::object& progress) {
        const InUse use(*this);
        const real target = finite(toReal(end));
        Ticker ticker(progress, run_.time(), target);
        guarded([&] {
            while (run_.step(target)) ticker.tick(run_.time(), run_.statistics().steps);
            return true;
        });
    }

    py::object value(const py::object& time, const std::string& formula) {
        const InUse use(*this);
        const real at = time.is_none() ? run_.time() : toReal(time);
        const real begin = run_.stepBegin();
        if (!(at >= std::min(begin, run_.time()) && at <= std::max(begin, run_.time())))
            throw py::value_error("the time lies outside of the last step");
        auto known = readouts_.find(formula);
        if (known == readouts_.end()) {
            known = readouts_.emplace(formula, Readout(problem_, {expressionOf(problem_, formula)})).first;
        }
        real x = 0;
        run_.read(known->second, at, &x);
        return fromReal(x);
    }

    py::list crossings() const {
        py::list list;
        for (const ZeroCrossing& zero : run_.crossings()) {
            list.append(py::make_tuple(zero.watched, fromReal(zero.time), zero.rising));
        }
        return list;
    }

    const Integrator& run() const { return run_; }

    py::tuple statistics() const {
        const IntegratorStatistics& s = run_.statistics();
        const double order = s.steps == 0 ? 0 : static_cast<double>(s.orders) / static_cast<double>(s.steps);
        return py::make_tuple(s.steps, s.repeated, s.jumps, order, fromReal(s.shortestStep), fromReal(s.longestStep));
    }

private:
    /// One thread at a time: the lock is released within a step.
    class InUse {
    public:
        explicit InUse(Stepper& stepper) : stepper_(stepper) {
            if (stepper.isInUse_) throw std::runtime_error("this integrator is at work in another thread");
            stepper.isInUse_ = true;
        }
        ~InUse() { stepper_.isInUse_ = false; }
        InUse(const InUse&) = delete;
        InUse& operator=(const InUse&) = delete;

    private:
        Stepper& stepper_;
    };

    static real finite(real x) {
        if (!std::isfinite(x)) throw py::value_error("a finite time is wanted");
        return x;
    }

    /// Far beyond what the step will be: they grow slowly.
    real farther() const {
        constexpr real times = 1024;
        const real last = std::fabs(run_.time() - run_.stepBegin());
        return run_.time() + (last > 0 ? last * times : std::fmax(1, std::fabs(run_.time())));
    }

    template <class Function>
    bool guarded(Function function) {
        try {
            const py::gil_scoped_release unlocked;
            return function();
        } catch (const RunError& error) {
            raiseRunError(error, py::none());
        }
    }

    Problem problem_;
    Integrator run_;
    std::map<std::string, Readout> readouts_;
    bool isInUse_ = false;
};

}  // namespace

void bindIntegrator(py::module_& module) {
    py::class_<Stepper>(module, "Stepper")
        .def(py::init<const Problem&, py::handle, py::handle>())
        .def("watch", &Stepper::watch)
        .def("step", &Stepper::step)
        .def("integrate_to", &Stepper::integrateTo)
        .def("value", &Stepper::value)
        .def("crossings", &Stepper::crossings)
        .def("statistics", &Stepper::statistics)
        .def_property_readonly("time", [](const Stepper& stepper) { return fromReal(stepper.run().time()); })
        .def_property_readonly("step_begin",
                               [](const Stepper& stepper) { return fromReal(stepper.run().stepBegin()); });
}

}  // namespace zirk::python
