// SPDX-License-Identifier: MIT
// Entry of the program.
#include "driver/run.hpp"

int main(int argc, char** argv) { return runProgram(argc, argv, Evaluation::Scheduled); }
