// SPDX-License-Identifier: MIT
// Signals that end a run or ask about it.
#pragma once

namespace zirk::solve {

/// From now on SIGUSR1 asks for a line about the run, instead of ending the process.
void listenForQuestions();

/// True once for every question.
bool isAsked();

/// While it lives, the signals by which users end a run (SIGINT, SIGTERM, SIGHUP) let the run come to its next row or
/// step. A run that does not come to one within a second, or gets such a signal again a moment later, is ended where it
/// stands.
class EndingHeld {
public:
    EndingHeld();
    ~EndingHeld();
    EndingHeld(const EndingHeld&) = delete;
    EndingHeld& operator=(const EndingHeld&) = delete;
};

/// The signal that wants the run to end; 0 for none.
int endingSignal();

/// Ends the process as the signal would have done by itself.
[[noreturn]] void endBySignal(int signal);

}  // namespace zirk::solve
