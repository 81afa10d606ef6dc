// SPDX-License-Identifier: MIT
// Large systems by other solvers on several threads: parallel PROBLEM SIZE END METHOD TOLERANCE THREADS prints the
// state.
//
// PROBLEM is rod or bodies, as the models of these names; METHOD is odeint (Fehlberg 7(8), OpenMP's range algebra) or
// cvode (Adams with fixed-point iteration, SUNDIALS' OpenMP vectors). Slopes are computed by loops of OpenMP.
#include <cvode/cvode.h>
#include <nvector/nvector_openmp.h>
#include <omp.h>
#include <sunnonlinsol/sunnonlinsol_fixedpoint.h>

#include <boost/numeric/odeint.hpp>
#include <boost/numeric/odeint/external/openmp/openmp.hpp>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using State = std::vector<double>;

struct System {
    State start;
    std::function<void(const double*, double*)> slopes;
};

System rod(long n) {
    System system;
    for (long i = 1; i <= n; ++i)
        system.start.push_back(std::sin(M_PI * static_cast<double>(i) / static_cast<double>(n + 1)));
    const double factor = static_cast<double>(n + 1) * static_cast<double>(n + 1);
    system.slopes = [n, factor](const double* u, double* d) {
#pragma omp parallel for schedule(static)
        for (long i = 0; i < n; ++i) {
            d[i] = factor * ((i > 0 ? u[i - 1] : 0) - 2 * u[i] + (i + 1 < n ? u[i + 1] : 0));
        }
    };
    return system;
}

/// With eight decimals, as the model has them.
double rounded(double x) {
    char text[40];
    std::snprintf(text, sizeof text, "%.8f", x);
    return std::strtod(text, nullptr);
}

/// State: positions of all bodies, then speeds.
System bodies(long n) {
    System system;
    system.start.resize(static_cast<std::size_t>(6 * n));
    for (long i = 0; i < n; ++i) {
        const double angle = 2 * M_PI * static_cast<double>(i + 1) / static_cast<double>(n);
        const double radius = 1 + static_cast<double>(i + 1) / 50;
        const double values[] = {radius * std::cos(angle),
                                 radius * std::sin(angle),
                                 0.1 * std::sin(7 * angle),
                                 -std::sin(angle) / std::sqrt(radius),
                                 std::cos(angle) / std::sqrt(radius),
                                 0};
        for (long a = 0; a < 3; ++a) {
            system.start[static_cast<std::size_t>(3 * i + a)] = rounded(values[a]);
            system.start[static_cast<std::size_t>(3 * (n + i) + a)] = rounded(values[3 + a]);
        }
    }
    system.slopes = [n](const double* u, double* d) {
    // Each pair twice: threads would have to wait for each other to share it.
#pragma omp parallel for schedule(static)
        for (long i = 0; i < n; ++i) {
            double force[3] = {0, 0, 0};
            for (long j = 0; j < n; ++j) {
                if (j == i) continue;
                double square = 1e-4;
                for (long a = 0; a < 3; ++a) square += (u[3 * j + a] - u[3 * i + a]) * (u[3 * j + a] - u[3 * i + a]);
                const double weight = 0.001 / (square * std::sqrt(square));
                for (long a = 0; a < 3; ++a) force[a] += weight * (u[3 * j + a] - u[3 * i + a]);
            }
            for (long a = 0; a < 3; ++a) {
                d[3 * i + a] = u[3 * (n + i) + a];
                d[3 * (n + i) + a] = force[a];
            }
        }
    };
    return system;
}

void byOdeint(System& system, double end, double tolerance) {
    namespace odeint = boost::numeric::odeint;
    using Fehlberg = odeint::runge_kutta_fehlberg78<State, double, State, double, odeint::openmp_range_algebra>;
    const auto slopes = [&system](const State& u, State& d, double) { system.slopes(u.data(), d.data()); };
    omp_set_schedule(omp_sched_static, 0);
    odeint::integrate_adaptive(odeint::make_controlled(tolerance, tolerance, Fehlberg()), slopes, system.start, 0.0,
                               end, end / 1e4);
}

int slopesOf(realtype, N_Vector u, N_Vector d, void* system) {
    static_cast<System*>(system)->slopes(N_VGetArrayPointer(u), N_VGetArrayPointer(d));
    return 0;
}

void check(int result) {
    if (result < 0) throw std::runtime_error("error " + std::to_string(result));
}

void byCvode(System& system, double end, double tolerance, int threads) {
    SUNContext context = nullptr;
    SUNContext_Create(nullptr, &context);
    N_Vector state =
        N_VMake_OpenMP(static_cast<sunindextype>(system.start.size()), system.start.data(), threads, context);
    void* solver = CVodeCreate(CV_ADAMS, context);
    check(CVodeInit(solver, slopesOf, 0, state));
    check(CVodeSStolerances(solver, tolerance, tolerance));
    check(CVodeSetUserData(solver, &system));
    check(CVodeSetMaxNumSteps(solver, 1L << 30));
    check(CVodeSetStopTime(solver, end));
    SUNNonlinearSolver iteration = SUNNonlinSol_FixedPoint(state, 0, context);
    check(CVodeSetNonlinearSolver(solver, iteration));
    realtype time = 0;
    check(CVode(solver, end, state, &time, CV_NORMAL));
    SUNNonlinSolFree(iteration);
    CVodeFree(&solver);
    N_VDestroy(state);
    SUNContext_Free(&context);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 7) return 2;
    const long size = std::atol(argv[2]);
    System system = std::string(argv[1]) == "rod" ? rod(size) : bodies(size);
    const double end = std::atof(argv[3]);
    const double tolerance = std::atof(argv[5]);
    const int threads = std::atoi(argv[6]);
    omp_set_num_threads(threads);
    try {
        std::string(argv[4]) == "odeint" ? byOdeint(system, end, tolerance) : byCvode(system, end, tolerance, threads);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "parallel: %s\n", error.what());
        return 1;
    }
    // Positions of bodies; all cells of a rod.
    const std::size_t shown = static_cast<std::size_t>(std::string(argv[1]) == "rod" ? size : 3 * size);
    for (std::size_t i = 0; i < shown; ++i) std::printf("%.17e\n", system.start[i]);
    return 0;
}
