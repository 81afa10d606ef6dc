// SPDX-License-Identifier: MIT
// Differences of processor times.
#include "driver/clock.hpp"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

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

TEST(RunClock, MeasuresTheProcessorTimeBetweenItsSamples) {
    RunClock clock;
    rusage before{};
    getrusage(RUSAGE_SELF, &before);
    clock.startClock();
    volatile unsigned work = 0;
    rusage now{};
    do {
        for (int i = 0; i < 100000; ++i) work = work + 1;
        getrusage(RUSAGE_SELF, &now);
    } while (difference(before.ru_utime, now.ru_utime).tv_usec < 20000);
    clock.stopClock();
    std::ostringstream log;
    clock.printTimes(log);
    const std::string text = log.str();
    std::smatch part;
    ASSERT_TRUE(
        std::regex_match(text, part, std::regex("#\\(INFO\\) utime=([0-9]+)s([0-9]+)us \tstime=[0-9]+s[0-9]+us\n")));
    EXPECT_EQ(part[1], "0");
    EXPECT_GE(std::stol(part[2]), 15000);
}

}  // namespace
