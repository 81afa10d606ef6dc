// SPDX-License-Identifier: MIT
// Entry of the program.
#include "driver/program.hpp"

int main(int argc, char** argv) { return zirk::runProgram(argc, argv, zirk::Evaluation::Compiled); }
