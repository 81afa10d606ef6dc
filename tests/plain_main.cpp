// SPDX-License-Identifier: MIT
// The program done the plain way, as the reference for the fast one: every series summed by the nodes themselves, every
// number formatted by an output stream, diagnostics written insertion by insertion.
#include "driver/program.hpp"

using namespace zirk;

int main(int argc, char** argv) { return runProgram(argc, argv, Evaluation::NodeByNode); }
