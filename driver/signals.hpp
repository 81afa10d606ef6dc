// SPDX-License-Identifier: MIT
// Interrupt menu and crash report. A run does not install them: signals keep their default actions unless a caller
// asks.
#pragma once

#include <csignal>

namespace zirk {

/// Installs onInterrupt for SIGTERM and SIGINT, onFault for SIGSEGV and SIGFPE.
void installSignalHandlers();

/// Shows the menu on standard error and acts on one character from standard input: c continue, p print and continue,
/// x print and exit, anything else exit. Exits have status 255.
void onInterrupt(int signal);

/// Writes the signal, the addresses and a call trace to standard output and ends the process with status 0.
void onFault(int signal, siginfo_t* info, void* context);

}  // namespace zirk
