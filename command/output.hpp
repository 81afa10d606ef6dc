// SPDX-License-Identifier: MIT
// Standard output and standard error, buffered as whole lines and kept in order where they meet.
#pragma once

#include <memory>
#include <ostream>
#include <stdexcept>

namespace zirk {

/// Results cannot be written; what() says why, in the words of the system.
class ResultsLost : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Both streams of a run.
///
/// Lines collect in memory and go out in large writes: when 64 KiB are full, when a tenth of a second has passed, or at
/// once on a terminal. Where both streams lead to the same file, pipe or terminal, their bytes keep the order in which
/// they were written; otherwise neither waits for the other. Diagnostics that cannot be written are lost, and results
/// go on without them.
///
/// SIGINT, SIGTERM and SIGHUP come between rows. Only a row of more than PIPE_BUF bytes that a reader leaves standing
/// half taken for a second is cut by them, on purpose: a run must be stoppable whatever its reader does.
class Output {
public:
    Output(int resultsDescriptor, int logDescriptor);
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    std::ostream& results() { return *results_; }
    std::ostream& log() { return *log_; }

    /// Once per point: writes what has waited long enough. ResultsLost when results cannot be written.
    void tick();

    /// Writes everything. ResultsLost when results cannot be written.
    void flush();

    /// As flushQuietly, from a signal handler: leaves a queue alone that is being changed right now.
    void flushFromHandler();

    /// Writes what is left without raising errors, for the last line of a failing run.
    void flushQuietly();

private:
    class Queue;
    class Channel;

    std::unique_ptr<Queue> queues_[2];
    std::unique_ptr<Channel> channels_[2];
    std::unique_ptr<std::ostream> results_;
    std::unique_ptr<std::ostream> log_;
};

}  // namespace zirk
