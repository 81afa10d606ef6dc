// SPDX-License-Identifier: MIT
// The program with every series summed by the nodes themselves: the reference that the schedule is compared with.
#include "driver/run.hpp"

int main(int argc, char** argv) { return runProgram(argc, argv, Evaluation::NodeByNode); }
