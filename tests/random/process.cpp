// SPDX-License-Identifier: MIT
// Streams are files in memory, so that nothing waits for a reader.
#include "tests/random/process.hpp"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace random_systems {

namespace {

constexpr rlim_t longestStream = 1 << 18;
/// Processor time; most runs need a hundredth of it.
constexpr suseconds_t longestRun = 40000;

class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("stream", MFD_CLOEXEC)) {
        if (descriptor_ < 0) throw std::runtime_error("no memory file");
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return descriptor_; }

    void fill(const std::string& text) {
        if (write(descriptor_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
            throw std::runtime_error("memory file not written");
        }
        lseek(descriptor_, 0, SEEK_SET);
    }

    std::string content() const {
        std::string text(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
        const ssize_t count = pread(descriptor_, text.data(), text.size(), 0);
        text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return text;
    }

private:
    int descriptor_;
};

[[noreturn]] void become(char* const* arguments, const int (&descriptors)[3]) {
    for (int i = 0; i < 3; ++i) dup2(descriptors[i], i);
    const rlimit size{longestStream, longestStream};
    setrlimit(RLIMIT_FSIZE, &size);
    const itimerval time{{0, 0}, {0, longestRun}};
    setitimer(ITIMER_PROF, &time, nullptr);
    execv(arguments[0], arguments);
    _exit(127);
}

/// What the limit of this file makes the program say; when depends on what waits in its queues.
void dropLimitMessage(std::string& log) {
    const std::size_t start = log.rfind("#(ERR) Error by writing results: File too large");
    if (start != std::string::npos) log.resize(start);
}

void maskTimes(std::string& log) {
    const std::size_t start = log.rfind("#(INFO) utime=");
    if (start == std::string::npos) return;
    const std::size_t end = log.find('\n', start);
    log.replace(start, end - start, "#(INFO) utime=*");
}

}  // namespace

Outcome run(const std::string& program, const std::vector<std::string>& arguments, const std::string& input) {
    MemoryFile in;
    MemoryFile out;
    MemoryFile err;
    in.fill(input);
    // Made before the fork: what follows it may not allocate.
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const int descriptors[3] = {in.descriptor(), out.descriptor(), err.descriptor()};

    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process");
    if (child == 0) become(pointers.data(), descriptors);
    int status = 0;
    waitpid(child, &status, 0);

    Outcome outcome;
    outcome.results = out.content();
    outcome.log = err.content();
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    if (outcome.status == 127) throw std::runtime_error("cannot start " + program);
    outcome.cut = outcome.status == 128 + SIGPROF || outcome.results.size() >= longestStream ||
                  outcome.log.size() >= longestStream;
    if (outcome.cut) {
        dropLimitMessage(outcome.log);
    } else {
        maskTimes(outcome.log);
    }
    return outcome;
}

}  // namespace random_systems
