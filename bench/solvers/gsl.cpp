// SPDX-License-Identifier: MIT
// Workloads by the GNU Scientific Library in double precision: gsl PROBLEM METHOD TOLERANCE prints the final state.
#include <gsl/gsl_errno.h>
#include <gsl/gsl_odeiv2.h>

#include "bench/solvers/problems.hpp"

namespace {

int slopes(double, const double* u, double* d, void* problem) {
    static_cast<const Problem<double>*>(problem)->slopes(u, d);
    return GSL_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    Problem<double> problem = problemNamed<double>(argv[1], 3.14159265358979323846);
    const std::string method = argv[2];
    const double tolerance = std::atof(argv[3]);
    const gsl_odeiv2_step_type* type = method == "rk8pd" ? gsl_odeiv2_step_rk8pd : gsl_odeiv2_step_msadams;
    gsl_odeiv2_system system{slopes, nullptr, problem.start.size(), &problem};
    gsl_odeiv2_driver* driver = gsl_odeiv2_driver_alloc_y_new(&system, type, 1e-6, tolerance, tolerance);
    double time = 0;
    const int status = gsl_odeiv2_driver_apply(driver, &time, problem.end, problem.start.data());
    gsl_odeiv2_driver_free(driver);
    if (status != GSL_SUCCESS) {
        std::fprintf(stderr, "gsl: %s at time %g\n", gsl_strerror(status), time);
        return 1;
    }
    for (std::size_t i = 0; i < problem.shown; ++i) printNumber(problem.start[i]);
    return 0;
}
