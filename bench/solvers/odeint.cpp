// SPDX-License-Identifier: MIT
// Workloads by Boost.odeint in long double: odeint PROBLEM METHOD TOLERANCE prints the final state.
#include <boost/numeric/odeint.hpp>

#include "bench/solvers/problems.hpp"

namespace {

namespace odeint = boost::numeric::odeint;
using State = std::vector<long double>;

template <class Stepper>
void solve(Stepper stepper, Problem<long double>& problem) {
    const auto slopes = [&problem](const State& u, State& d, long double) { problem.slopes(u.data(), d.data()); };
    const long double end = problem.end;
    odeint::integrate_adaptive(stepper, slopes, problem.start, 0.0L, end, 1e-6L);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    Problem<long double> problem = problemNamed<long double>(argv[1], 3.14159265358979323846264338327950288L);
    const std::string method = argv[2];
    const long double tolerance = std::strtold(argv[3], nullptr);
    try {
        if (method == "rkf78") {
            using Fehlberg = odeint::runge_kutta_fehlberg78<State, long double, State, long double>;
            solve(odeint::make_controlled(tolerance, tolerance, Fehlberg()), problem);
        } else {
            solve(odeint::bulirsch_stoer<State, long double, State, long double>(tolerance, tolerance), problem);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "odeint: %s\n", error.what());
        return 1;
    }
    for (std::size_t i = 0; i < problem.shown; ++i) printNumber(problem.start[i]);
    return 0;
}
