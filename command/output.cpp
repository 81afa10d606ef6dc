// SPDX-License-Identifier: MIT
// Queues of bytes and the stream buffers in front of them.
#include "command/output.hpp"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <ctime>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace zirk {

namespace {

constexpr std::size_t fullQueue = 1 << 16;
constexpr long maxDelayMs = 100;
/// How long a reader may take nothing in the middle of a row.
constexpr int maxStallMs = 1000;

/// Milliseconds of a clock that costs next to nothing to read.
long now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return time.tv_sec * 1000 + time.tv_nsec / 1000000;
}

bool sameDestination(int a, int b) {
    struct stat first {};
    struct stat second {};
    if (fstat(a, &first) != 0 || fstat(b, &second) != 0) return false;
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

/// True when both descriptors write at one common position, so that either may write for both.
bool shareOnePosition(int a, int b) {
    struct stat status {};
    if (fstat(a, &status) != 0) return false;
    if (!S_ISREG(status.st_mode)) return true;
    const off_t first = lseek(a, 0, SEEK_CUR);
    if (first < 0 || lseek(b, 0, SEEK_CUR) != first) return false;
    if (lseek(a, first + 1, SEEK_SET) < 0) return false;
    const bool moved = lseek(b, 0, SEEK_CUR) == first + 1;
    lseek(a, first, SEEK_SET);
    return moved;
}

/// False when the time is up; what is wrong with the descriptor shows when it is written to.
bool waitUntilWritable(int descriptor, int milliseconds) {
    pollfd request{descriptor, POLLOUT, 0};
    return poll(&request, 1, milliseconds) != 0;
}

/// Holds back the signals by which users end a run.
class SignalsHeld {
public:
    SignalsHeld() {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &before_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

    /// Those that wait come in now.
    void admit() const {
        sigset_t held;
        pthread_sigmask(SIG_SETMASK, &before_, &held);
        pthread_sigmask(SIG_SETMASK, &held, nullptr);
    }

private:
    sigset_t before_{};
};

/// Hands on some of the bytes and moves behind them; the error when the descriptor does not take them, 0 otherwise.
int writeSome(int descriptor, std::string_view& bytes, std::size_t count) {
    const ssize_t written = write(descriptor, bytes.data(), std::min(count, bytes.size()));
    if (written >= 0) {
        bytes.remove_prefix(static_cast<std::size_t>(written));
        return 0;
    }
    // For descriptors that somebody made non-blocking.
    if (errno == EAGAIN) waitUntilWritable(descriptor, -1);
    return errno == EINTR || errno == EAGAIN ? 0 : errno;
}

/// As many rows as one write to a pipe takes whole or not at all; or one row that is longer than that.
std::string_view nextRows(std::string_view bytes) {
    if (bytes.size() <= PIPE_BUF) return bytes;
    std::size_t end = bytes.rfind('\n', PIPE_BUF - 1);
    if (end == std::string_view::npos) end = bytes.find('\n', PIPE_BUF);
    return end == std::string_view::npos ? bytes : bytes.substr(0, end + 1);
}

/// A row that a pipe does not take at once. Signals wait until the whole row is out, but only for as long as somebody
/// reads: when the reader stalls, ending the run is worth more than the rest of the row.
int writeLongRow(int descriptor, std::string_view row) {
    waitUntilWritable(descriptor, -1);
    const SignalsHeld held;
    while (!row.empty()) {
        if (!waitUntilWritable(descriptor, maxStallMs)) {
            held.admit();
        } else if (const int error = writeSome(descriptor, row, PIPE_BUF)) {
            // There was room for PIPE_BUF bytes: the write itself does not wait.
            return error;
        }
    }
    return 0;
}

/// Writes all bytes, so that no signal cuts a row; the error when the descriptor does not take them, 0 otherwise.
///
/// A write to a file is short, so signals wait for it. A write to anything else may wait for ever and must let them in.
/// There, pieces of whole rows are small enough that a pipe takes each of them whole or, interrupted, not at all.
int writeAll(int descriptor, std::string_view bytes) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0) return errno;
    int error = 0;
    if (S_ISREG(status.st_mode)) {
        const SignalsHeld held;
        while (error == 0 && !bytes.empty()) error = writeSome(descriptor, bytes, bytes.size());
        return error;
    }
    while (error == 0 && !bytes.empty()) {
        std::string_view rows = nextRows(bytes);
        bytes.remove_prefix(rows.size());
        if (rows.size() > PIPE_BUF && S_ISFIFO(status.st_mode)) {
            error = writeLongRow(descriptor, rows);
        } else {
            while (error == 0 && !rows.empty()) error = writeSome(descriptor, rows, rows.size());
        }
    }
    return error;
}

}  // namespace

/// Bytes on their way to one destination, in order, with the descriptor of each run of bytes.
class Output::Queue {
public:
    void append(int descriptor, const char* bytes, std::size_t count) {
        busy_ = 1;
        bytes_.append(bytes, count);
        if (runs_.empty() || runs_.back().descriptor != descriptor) runs_.push_back({descriptor, 0});
        runs_.back().end = bytes_.size();
        busy_ = 0;
        const bool line = bytes[count - 1] == '\n';
        if (bytes_.size() >= fullQueue && (line || bytes_.size() >= 16 * fullQueue)) flush();
    }

    void flushIfDue(long time) {
        if (!bytes_.empty() && time - flushed_ >= maxDelayMs) flush();
    }

    void flush() {
        busy_ = 1;
        std::size_t begin = 0;
        int resultsError = 0;
        for (const Run& run : runs_) {
            const int error = writeAll(run.descriptor, std::string_view(bytes_).substr(begin, run.end - begin));
            // Lost diagnostics must not keep anybody from the results.
            if (run.descriptor != STDERR_FILENO && resultsError == 0) resultsError = error;
            begin = run.end;
        }
        bytes_.clear();
        runs_.clear();
        flushed_ = now();
        busy_ = 0;
        if (resultsError == 0) return;
        throw ResultsLost(std::strerror(resultsError));
    }

    bool isBusy() const { return busy_ != 0; }

private:
    struct Run {
        int descriptor;
        std::size_t end;
    };

    volatile std::sig_atomic_t busy_ = 0;
    long flushed_ = now();
    std::string bytes_;
    std::vector<Run> runs_;
};

/// Stream buffer without a buffer of its own: everything goes to the queue.
class Output::Channel : public std::streambuf {
public:
    /// `isSeen`: every line goes on at once, for somebody waits for it.
    Channel(Queue& queue, int descriptor, bool isSeen) : queue_(queue), descriptor_(descriptor), isSeen_(isSeen) {}

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        append(bytes, static_cast<std::size_t>(count));
        return count;
    }
    int_type overflow(int_type character) override {
        if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
        const char byte = traits_type::to_char_type(character);
        append(&byte, 1);
        return character;
    }

private:
    void append(const char* bytes, std::size_t count) {
        if (count == 0) return;
        queue_.append(descriptor_, bytes, count);
        if (isSeen_ && bytes[count - 1] == '\n') queue_.flush();
    }

    Queue& queue_;
    const int descriptor_;
    const bool isSeen_;
};

Output::Output(int resultsDescriptor, int logDescriptor) {
    const bool together = sameDestination(resultsDescriptor, logDescriptor);
    const bool common = together && shareOnePosition(resultsDescriptor, logDescriptor);
    queues_[0] = std::make_unique<Queue>();
    if (!together) queues_[1] = std::make_unique<Queue>();
    const auto channel = [&](std::size_t queue, int descriptor, int writer) {
        return std::make_unique<Channel>(*queues_[queue], writer, isatty(descriptor) != 0);
    };
    channels_[0] = channel(0, resultsDescriptor, resultsDescriptor);
    channels_[1] = channel(together ? 0 : 1, logDescriptor, common ? resultsDescriptor : logDescriptor);
    results_ = std::make_unique<std::ostream>(channels_[0].get());
    log_ = std::make_unique<std::ostream>(channels_[1].get());
    // A failing queue must reach the caller and not only set a state.
    results_->exceptions(std::ios::badbit);
    log_->exceptions(std::ios::badbit);
}

Output::~Output() = default;

void Output::tick() {
    const long time = now();
    for (const auto& queue : queues_) {
        if (queue) queue->flushIfDue(time);
    }
}

void Output::flush() {
    for (const auto& queue : queues_) {
        if (queue) queue->flush();
    }
}

void Output::flushQuietly() {
    for (const auto& queue : queues_) {
        try {
            if (queue) queue->flush();
        } catch (const ResultsLost&) {
            // Told already, or about to be told.
        }
    }
}

void Output::flushFromHandler() {
    for (const auto& queue : queues_) {
        if (queue && queue->isBusy()) return;
    }
    flushQuietly();
}

}  // namespace zirk
