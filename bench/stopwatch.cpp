// SPDX-License-Identifier: MIT
// Runs a program COUNT times, without a shell, and writes processor time, time on the wall and memory of one run.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Status of the program; its output streams go where ours go.
int runOnce(char** command) {
    const pid_t child = vfork();
    if (child == 0) {
        execvp(command[0], command);
        _exit(127);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) < 0 || !WIFEXITED(status)) return 127;
    return WEXITSTATUS(status);
}

}  // namespace

/// stopwatch FILE COUNT PROGRAM ARGUMENT...: FILE gets one line: processor seconds and wall seconds per run, and
/// the most bytes of memory that a run held.
int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: stopwatch FILE COUNT PROGRAM ARGUMENT...\n");
        return 2;
    }
    const int count = std::atoi(argv[2]);
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i) {
        const int status = runOnce(argv + 3);
        if (status != 0) {
            std::fprintf(stderr, "stopwatch: %s ended with status %d\n", argv[3], status);
            return 1;
        }
    }
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    std::FILE* out = std::fopen(argv[1], "w");
    if (out == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    std::fprintf(out, "%.7f %.7f %ld\n", (seconds(usage.ru_utime) + seconds(usage.ru_stime)) / count,
                 wall.count() / count, usage.ru_maxrss * 1024);
    return std::fclose(out) == 0 ? 0 : 1;
}
