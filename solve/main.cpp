// SPDX-License-Identifier: MIT
// Entry of the command zirk-solve.
#include "solve/program.hpp"

int main(int argc, char** argv) { return zirk::solve::runProgram(argc, argv); }
