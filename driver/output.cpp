// SPDX-License-Identifier: MIT
// Queues of bytes and the stream buffers in front of them.
#include "driver/output.hpp"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <streambuf>
#include <string>
#include <vector>

#include "expr/failure.hpp"
#include "expr/line.hpp"

namespace {

constexpr std::size_t fullQueue = 1 << 16;
constexpr long maxDelayMs = 100;

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

/// For descriptors that somebody made non-blocking.
bool waitUntilWritable(int descriptor) {
    pollfd request{descriptor, POLLOUT, 0};
    return poll(&request, 1, -1) >= 0 || errno == EINTR;
}

/// Writes all bytes; false with errno set when the descriptor does not take them.
bool writeAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written < 0) {
            if (errno == EINTR) continue;
            if (errno == EAGAIN && waitUntilWritable(descriptor)) continue;
            return false;
        }
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return true;
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
            if (!writeAll(run.descriptor, bytes_.data() + begin, run.end - begin)) {
                // Lost diagnostics must not keep anybody from the results.
                if (run.descriptor != STDERR_FILENO && resultsError == 0) resultsError = errno;
            }
            begin = run.end;
        }
        bytes_.clear();
        runs_.clear();
        flushed_ = now();
        busy_ = 0;
        if (resultsError == 0) return;
        throw Failure(std::string("#(ERR) Error by writing results: ") + std::strerror(resultsError) + "\n", 1);
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
    /// When bytes go on to the descriptor without waiting for more.
    enum class Pass { WhenDue, Lines, Pieces };

    Channel(Queue& queue, int descriptor, Pass pass) : queue_(queue), descriptor_(descriptor), pass_(pass) {}

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
        if (pass_ == Pass::Pieces || (pass_ == Pass::Lines && bytes[count - 1] == '\n')) queue_.flush();
    }

    Queue& queue_;
    const int descriptor_;
    const Pass pass_;
};

Output::Output(int resultsDescriptor, int logDescriptor, Delivery delivery) {
    using Pass = Channel::Pass;
    const bool together = sameDestination(resultsDescriptor, logDescriptor);
    const bool common = together && shareOnePosition(resultsDescriptor, logDescriptor);
    const auto pass = [delivery](int descriptor, Pass immediate) {
        if (delivery == Delivery::Immediate) return immediate;
        return isatty(descriptor) != 0 ? Pass::Lines : Pass::WhenDue;
    };
    queues_[0] = std::make_unique<Queue>();
    if (!together) queues_[1] = std::make_unique<Queue>();
    channels_[0] = std::make_unique<Channel>(*queues_[0], resultsDescriptor, pass(resultsDescriptor, Pass::Lines));
    channels_[1] = std::make_unique<Channel>(*queues_[together ? 0 : 1], common ? resultsDescriptor : logDescriptor,
                                             pass(logDescriptor, Pass::Pieces));
    results_ = std::make_unique<std::ostream>(channels_[0].get());
    log_ = std::make_unique<std::ostream>(channels_[1].get());
    // A failing queue must reach the caller and not only set a state.
    results_->exceptions(std::ios::badbit);
    log_->exceptions(std::ios::badbit);
    if (delivery == Delivery::Collected) return;
    insertPieceByPiece(*results_);
    insertPieceByPiece(*log_);
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
        } catch (const Failure&) {
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
