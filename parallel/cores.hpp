// SPDX-License-Identifier: MIT
// How many processors this process may use, and how many of them its runs are using.
#pragma once

#include <string>
#include <string_view>

namespace zirk {

/// More threads than this are never started.
constexpr unsigned mostThreads = 256;

/// Processors that this process may run on: those of its affinity mask, and no more than the quota of its control
/// groups pays for, rounded up. Containers often show all processors of the machine but pay for a few. At least 1;
/// asked of the system once.
unsigned usableProcessors();

/// What ThreadOptions::ofEnvironment makes of a value of the variable.
unsigned threadsIn(std::string_view value);

/// The processors that the runs of this process share: as many as the environment says, else those that are usable.
unsigned processorsToShare();

/// Processors that the quota of the control groups named in `membership` (the text of /proc/self/cgroup) pays for, with
/// the file system of groups at `root`; 0 without a limit.
unsigned quotaOfGroups(const std::string& membership, const std::string& root);

/// The processors that one step of a run takes while it lives.
///
/// All runs of a process that may use several threads count here, so that together they take no more processors than
/// there are: each takes what the others leave, at least its own thread and at most `most`.
class ProcessorShare {
public:
    /// `isShared`: whether others count; otherwise it takes `most` whatever they do, and they see that.
    ProcessorShare(unsigned most, bool isShared);
    ~ProcessorShare();
    ProcessorShare(const ProcessorShare&) = delete;
    ProcessorShare& operator=(const ProcessorShare&) = delete;

    unsigned size() const { return size_; }

private:
    unsigned size_;
};

}  // namespace zirk
