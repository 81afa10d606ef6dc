// SPDX-License-Identifier: MIT
// What is left of a run that a signal ends while it writes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <string>
#include <thread>

#include "command/output.hpp"

using namespace zirk;

namespace {

using std::chrono::milliseconds;

/// A process that writes rows of one length until it is ended.
class Writer {
public:
    Writer(int descriptor, std::size_t rowLength, int other = -1) {
        process_ = fork();
        if (process_ != 0) return;
        if (other >= 0) close(other);
        // Whoever runs the tests may have them ignored.
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, SIG_DFL);
        const std::string row(rowLength - 1, 'x');
        Output output(descriptor, STDERR_FILENO);
        // Much more than any of these tests lets it write.
        for (std::size_t bytes = 0; bytes < std::size_t{1} << 32; bytes += rowLength) output.results() << row + '\n';
        _exit(0);
    }
    ~Writer() {
        if (process_ <= 0) return;
        ::kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// True when the signal ended the process within half a minute.
    bool end(int signal) {
        ::kill(process_, signal);
        for (int i = 0; i < 3000; ++i) {
            int status = 0;
            if (waitpid(process_, &status, WNOHANG) == process_) {
                process_ = 0;
                return WIFSIGNALED(status) && WTERMSIG(status) == signal;
            }
            std::this_thread::sleep_for(milliseconds(10));
        }
        return false;
    }

private:
    pid_t process_;
};

/// Reads to the end, and says whether everything is made of whole rows.
bool holdsWholeRows(int descriptor, std::size_t rowLength, std::size_t alreadyRead = 0) {
    std::size_t total = alreadyRead;
    char buffer[1 << 16];
    for (ssize_t count = 0; (count = read(descriptor, buffer, sizeof buffer)) > 0;) {
        total += static_cast<std::size_t>(count);
    }
    return total % rowLength == 0;
}

/// Waits until the writer has filled the pipe, which shows by nothing coming in for a while; at most ten seconds.
void waitUntilFull(int descriptor) {
    int last = 0;
    for (int i = 0; i < 100; ++i) {
        std::this_thread::sleep_for(milliseconds(100));
        int now = 0;
        ioctl(descriptor, FIONREAD, &now);
        if (now == last && now > 0) return;
        last = now;
    }
}

TEST(OutputAndSignals, LeaveWholeRowsInAFile) {
    const std::string path = testing::TempDir() + "rows-of-an-ended-run";
    // Half of the time goes into writes: one that were cut would show soon.
    for (int i = 0; i < 60; ++i) {
        const int file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
        ASSERT_GE(file, 0);
        Writer writer(file, 100);
        struct stat status {};
        while (fstat(file, &status) == 0 && status.st_size < 100000 + 7919 * i) std::this_thread::yield();
        EXPECT_TRUE(writer.end(i % 3 == 0 ? SIGINT : i % 3 == 1 ? SIGTERM : SIGHUP));
        fstat(file, &status);
        EXPECT_EQ(status.st_size % 100, 0) << i;
        close(file);
    }
    std::remove(path.c_str());
}

TEST(OutputAndSignals, LeaveWholeRowsInAPipeThatNobodyReads) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        Writer writer(ends[1], 100, ends[0]);
        close(ends[1]);
        waitUntilFull(ends[0]);
        EXPECT_TRUE(writer.end(signal)) << "a reader that stalls keeps the run from being ended";
        EXPECT_TRUE(holdsWholeRows(ends[0], 100)) << signal;
        close(ends[0]);
    }
}

TEST(OutputAndSignals, EndARunWhoseLongRowNobodyReads) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    Writer writer(ends[1], 10000, ends[0]);
    close(ends[1]);
    waitUntilFull(ends[0]);
    EXPECT_TRUE(writer.end(SIGTERM)) << "a reader that stalls keeps the run from being ended";
    close(ends[0]);
}

TEST(OutputAndSignals, LeaveLongRowsWholeForASlowReader) {
    constexpr std::size_t row = 300000;
    for (int i = 0; i < 10; ++i) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        Writer writer(ends[1], row, ends[0]);
        close(ends[1]);
        std::size_t total = 0;
        char buffer[5000];
        // Much slower than the writer, who is within a row nearly all the time.
        while (total < 200000u + 50000u * static_cast<unsigned>(i)) {
            const ssize_t count = read(ends[0], buffer, sizeof buffer);
            ASSERT_GT(count, 0);
            total += static_cast<std::size_t>(count);
            std::this_thread::sleep_for(milliseconds(1));
        }
        bool whole = false;
        std::thread reader([&] { whole = holdsWholeRows(ends[0], row, total); });
        EXPECT_TRUE(writer.end(SIGINT));
        reader.join();
        EXPECT_TRUE(whole) << i;
        close(ends[0]);
    }
}

}  // namespace
