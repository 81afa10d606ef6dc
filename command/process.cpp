// SPDX-License-Identifier: MIT
// Descriptors and signals as every command wants them.
#include "command/process.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>

#include "command/memory_bound.hpp"

namespace zirk {

namespace {

/// A missing standard descriptor must not be taken by the next file that is opened; using it still fails.
void occupyStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) >= 0) continue;
        // The lowest free descriptor is this one.
        (void)!open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

}  // namespace

void prepareProcess() {
    boundMemory();
    // A file that must not grow further is a write error like any other.
    std::signal(SIGXFSZ, SIG_IGN);
    occupyStandardDescriptors();
}

}  // namespace zirk
