// SPDX-License-Identifier: MIT
// Processor time of the solve.
#pragma once

#include <sys/resource.h>
#include <sys/time.h>

#include <iosfwd>

namespace zirk {

/// end - start. A borrow is taken from the seconds only when there are some, on purpose.
timeval difference(const timeval& start, const timeval& end);

/// Two samples of the process's resource usage.
class RunClock {
public:
    void startClock();
    void stopClock();

    /// Writes the user and the system time between the samples.
    void printTimes(std::ostream& log) const;

private:
    rusage start_{};
    rusage end_{};
};

}  // namespace zirk
