// SPDX-License-Identifier: MIT
// Workloads by SUNDIALS in double precision: sundials PROBLEM METHOD TOLERANCE prints the final state.
//
// adams and bdf are CVODE's two families, erk8 is ARKODE's explicit pair of orders 8 and 7.
#include <arkode/arkode_erkstep.h>
#include <cvode/cvode.h>
#include <nvector/nvector_serial.h>
#include <sunlinsol/sunlinsol_band.h>
#include <sunmatrix/sunmatrix_band.h>
#include <sunnonlinsol/sunnonlinsol_fixedpoint.h>

#include <stdexcept>

#include "bench/solvers/problems.hpp"

namespace {

constexpr long noStepLimit = 2000000000;

int slopes(realtype, N_Vector u, N_Vector d, void* problem) {
    static_cast<const Problem<double>*>(problem)->slopes(N_VGetArrayPointer(u), N_VGetArrayPointer(d));
    return 0;
}

void check(int status) {
    if (status < 0) throw std::runtime_error("status " + std::to_string(status));
}

void solveExplicit(Problem<double>& problem, N_Vector state, double tolerance, SUNContext context) {
    void* solver = ERKStepCreate(slopes, 0, state, context);
    check(ERKStepSetTableNum(solver, ARKODE_FEHLBERG_13_7_8));
    check(ERKStepSStolerances(solver, tolerance, tolerance));
    check(ERKStepSetUserData(solver, &problem));
    check(ERKStepSetMaxNumSteps(solver, noStepLimit));
    check(ERKStepSetStopTime(solver, problem.end));
    realtype time = 0;
    check(ERKStepEvolve(solver, problem.end, state, &time, ARK_NORMAL));
    ERKStepFree(&solver);
}

/// Newton's method with a banded Jacobian where the problem is stiff, fixed-point iteration elsewhere.
void solveMultistep(Problem<double>& problem, N_Vector state, int family, double tolerance, SUNContext context) {
    void* solver = CVodeCreate(family, context);
    check(CVodeInit(solver, slopes, 0, state));
    check(CVodeSStolerances(solver, tolerance, tolerance));
    check(CVodeSetUserData(solver, &problem));
    check(CVodeSetMaxNumSteps(solver, noStepLimit));
    check(CVodeSetStopTime(solver, problem.end));
    SUNMatrix matrix = nullptr;
    SUNLinearSolver linear = nullptr;
    SUNNonlinearSolver iteration = nullptr;
    if (family == CV_BDF) {
        const auto n = static_cast<sunindextype>(problem.start.size());
        const sunindextype width = problem.bandwidth >= 0 ? problem.bandwidth : n - 1;
        matrix = SUNBandMatrix(n, width, width, context);
        linear = SUNLinSol_Band(state, matrix, context);
        check(CVodeSetLinearSolver(solver, linear, matrix));
    } else {
        iteration = SUNNonlinSol_FixedPoint(state, 0, context);
        check(CVodeSetNonlinearSolver(solver, iteration));
    }
    realtype time = 0;
    check(CVode(solver, problem.end, state, &time, CV_NORMAL));
    CVodeFree(&solver);
    if (linear != nullptr) SUNLinSolFree(linear);
    if (matrix != nullptr) SUNMatDestroy(matrix);
    if (iteration != nullptr) SUNNonlinSolFree(iteration);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return 2;
    Problem<double> problem = problemNamed<double>(argv[1], 3.14159265358979323846);
    const std::string method = argv[2];
    const double tolerance = std::atof(argv[3]);
    SUNContext context = nullptr;
    SUNContext_Create(nullptr, &context);
    N_Vector state = N_VMake_Serial(static_cast<sunindextype>(problem.start.size()), problem.start.data(), context);
    try {
        if (method == "erk8") {
            solveExplicit(problem, state, tolerance, context);
        } else {
            solveMultistep(problem, state, method == "bdf" ? CV_BDF : CV_ADAMS, tolerance, context);
        }
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "sundials: %s\n", error.what());
        return 1;
    }
    for (std::size_t i = 0; i < problem.shown; ++i) printNumber(problem.start[i]);
    N_VDestroy(state);
    SUNContext_Free(&context);
    return 0;
}
