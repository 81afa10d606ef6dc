// SPDX-License-Identifier: MIT
// Samples and their difference.
#include "driver/clock.hpp"

#include <ostream>

namespace zirk {

timeval difference(const timeval& start, const timeval& end) {
    timeval result{};
    result.tv_sec = end.tv_sec - start.tv_sec;
    result.tv_usec = end.tv_usec - start.tv_usec;
    if (result.tv_usec < 0) {
        result.tv_usec += 1000000;
        if (result.tv_sec > 0) --result.tv_sec;
    }
    return result;
}

void RunClock::startClock() { getrusage(RUSAGE_SELF, &start_); }

void RunClock::stopClock() { getrusage(RUSAGE_SELF, &end_); }

void RunClock::printTimes(std::ostream& log) const {
    const timeval user = difference(start_.ru_utime, end_.ru_utime);
    const timeval system = difference(start_.ru_stime, end_.ru_stime);
    log << "#(INFO) utime=" << user.tv_sec << 's' << user.tv_usec << "us \tstime=" << system.tv_sec << 's'
        << system.tv_usec << "us\n";
}

}  // namespace zirk
