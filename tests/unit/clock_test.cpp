// SPDX-License-Identifier: MIT
// Differences of processor times, and where a run takes its samples.
#include "driver/clock.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

#include "driver/run.hpp"

using namespace zirk;

namespace {

timeval at(long seconds, long microseconds) {
    timeval time{};
    time.tv_sec = seconds;
    time.tv_usec = microseconds;
    return time;
}

void expectTime(const timeval& time, long seconds, long microseconds) {
    EXPECT_EQ(time.tv_sec, seconds);
    EXPECT_EQ(time.tv_usec, microseconds);
}

TEST(TimeDifference, BorrowsASecondForTheMicroseconds) {
    expectTime(difference(at(5, 900000), at(6, 100000)), 0, 200000);
    expectTime(difference(at(5, 900000), at(8, 100000)), 2, 200000);
}

// Seconds that are none, or less than none, lend nothing: the difference is then a second too large, on purpose.
TEST(TimeDifference, BorrowsOnlyFromSecondsThatAreThere) {
    expectTime(difference(at(5, 900000), at(5, 100000)), 0, 200000);
    expectTime(difference(at(6, 900000), at(5, 100000)), -1, 200000);
    expectTime(difference(at(5, 900000), at(5, 899999)), 0, 999999);
}

TEST(TimeDifference, WithoutABorrowIsTakenPartByPart) {
    expectTime(difference(at(5, 100), at(7, 350)), 2, 250);
    expectTime(difference(at(5, 100), at(5, 100)), 0, 0);
}

TEST(RunClock, WritesMicrosecondsWithoutPadding) {
    RunClock clock;
    std::ostringstream log;
    clock.printTimes(log);
    EXPECT_EQ(log.str(), "#(INFO) utime=0s0us \tstime=0s0us\n");
}

/// User time of this process in microseconds.
long userTime() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec * 1000000 + usage.ru_utime.tv_usec;
}

void spend(long microseconds) {
    const long end = userTime() + microseconds;
    volatile unsigned work = 0;
    while (userTime() < end) {
        for (int i = 0; i < 100000; ++i) work = work + 1;
    }
}

/// The user time that the one line of a text reports, in microseconds; -1 when there is no such line.
long reportedUserTime(const std::string& text) {
    std::smatch part;
    const std::regex line("#\\(INFO\\) utime=([0-9]+)s([0-9]+)us \tstime=[0-9]+s[0-9]+us\n");
    if (!std::regex_search(text, part, line)) return -1;
    return std::stol(part[1]) * 1000000 + std::stol(part[2]);
}

TEST(RunClock, MeasuresTheProcessorTimeBetweenItsSamples) {
    RunClock clock;
    spend(50000);
    const long beforeStart = userTime();
    clock.startClock();
    const long afterStart = userTime();
    spend(20000);
    const long beforeStop = userTime();
    clock.stopClock();
    const long afterStop = userTime();
    std::ostringstream log;
    clock.printTimes(log);
    EXPECT_GE(reportedUserTime(log.str()), beforeStop - afterStart);
    EXPECT_LE(reportedUserTime(log.str()), afterStop - beforeStart);
}

// No amount of time is expected here, only the order of the samples: those of this test lie around those of the run.
TEST(RunClock, OfARunCoversItsPassesAndNothingElse) {
    const std::string path = testing::TempDir() + "times-of-a-run";
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    ASSERT_GE(descriptor, 0);
    const Settings settings;
    {
        Output output(descriptor, descriptor);
        ::Run run(settings, output, Model::fromText("y' = 1 & 2;"), Evaluation::Compiled);
        spend(50000);
        const long beforeBegin = userTime();
        run.begin();
        const long afterBegin = userTime();
        spend(20000);
        while (run.pass()) {
        }
        spend(20000);
        const long beforeEnd = userTime();
        run.end();
        const long afterEnd = userTime();
        output.flush();
        std::ifstream file(path);
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        EXPECT_GE(reportedUserTime(text), beforeEnd - afterBegin) << text;
        EXPECT_LE(reportedUserTime(text), afterEnd - beforeBegin) << text;
    }
    close(descriptor);
    std::remove(path.c_str());
}

}  // namespace
