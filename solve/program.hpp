// SPDX-License-Identifier: MIT
// The command around a run.
#pragma once

namespace zirk::solve {

/// Command line in, exit status out.
int runProgram(int argc, char** argv);

}  // namespace zirk::solve
