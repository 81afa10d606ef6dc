// SPDX-License-Identifier: MIT
// The program around a run.
#pragma once

#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Command line in, exit status out: 0 normal end, 1 error, 2 unreadable input, 3 input that does not compile.
int runProgram(int argc, char** argv, Evaluation evaluation);

}  // namespace zirk
