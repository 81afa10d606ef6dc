// SPDX-License-Identifier: MIT
// Final states to compare with: closed forms where there are any, else extrapolation in quadruple precision.
//
// reference PROBLEM TOLERANCE prints the final state; closed forms ignore the tolerance.
#include <boost/multiprecision/float128.hpp>
#include <boost/numeric/odeint.hpp>

#include "bench/solvers/problems.hpp"

// odeint takes a number with a value_type for a nested container; this one is a plain number.
template <>
struct boost::numeric::odeint::detail::extract_value_type<boost::multiprecision::float128, void> {
    using type = boost::multiprecision::float128;
};

namespace {

using Real = boost::multiprecision::float128;
using State = std::vector<Real>;
namespace odeint = boost::numeric::odeint;

const Real pi("3.14159265358979323846264338327950288419716939937511");

/// Position and velocity from Kepler's equation E - e sin E = t, by Newton's method.
State kepler(const Real& time) {
    const Real e = Real(1) / 2;
    Real anomaly = time;
    for (int i = 0; i < 100; ++i) anomaly -= (anomaly - e * sin(anomaly) - time) / (1 - e * cos(anomaly));
    const Real rate = 1 / (1 - e * cos(anomaly));
    const Real minor = sqrt(1 - e * e);
    return {cos(anomaly) - e, minor * sin(anomaly), -sin(anomaly) * rate, minor * cos(anomaly) * rate};
}

/// One mode of the rod decays by the eigenvalue of the discrete second derivative.
State heat(const Problem<Real>& problem) {
    const Real n = static_cast<long long>(problem.start.size()) + 1;
    const Real s = sin(pi / (2 * n));
    State state = problem.start;
    for (Real& value : state) value *= exp(-4 * n * n * s * s * Real(problem.end));
    return state;
}

State extrapolated(Problem<Real>& problem, const Real& tolerance) {
    odeint::bulirsch_stoer<State, Real, State, Real> stepper(tolerance, tolerance);
    const auto slopes = [&problem](const State& u, State& d, const Real&) { problem.slopes(u.data(), d.data()); };
    odeint::integrate_adaptive(stepper, slopes, problem.start, Real(0), Real(problem.end), Real(1) / 1000000);
    return problem.start;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const std::string name = argv[1];
    Problem<Real> problem = problemNamed<Real>(name, pi);
    State state;
    if (name == "oscillator") {
        state = {cos(Real(problem.end)), -sin(Real(problem.end))};
    } else if (name == "kepler" || name == "kepler-inline") {
        state = kepler(Real(problem.end));
    } else if (name == "heat") {
        state = heat(problem);
    } else {
        state = extrapolated(problem, Real(argv[2]));
    }
    for (std::size_t i = 0; i < problem.shown; ++i) printNumber(static_cast<long double>(state[i]));
    return 0;
}
