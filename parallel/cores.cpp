// SPDX-License-Identifier: MIT
// The affinity mask, control groups of both versions, and a count of the processors in use.
#include "parallel/cores.hpp"

#include <sched.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <thread>
#include <vector>

#include "zirk/threads.hpp"

namespace zirk {

namespace {

constexpr double unlimited = std::numeric_limits<double>::infinity();

unsigned processorsOfMask() {
    // Masks of machines with many processors do not fit into the common size.
    for (int processors = 1024; processors <= 1 << 20; processors *= 4) {
        cpu_set_t* const mask = CPU_ALLOC(processors);
        if (mask == nullptr) break;
        const std::size_t bytes = CPU_ALLOC_SIZE(processors);
        const bool isKnown = sched_getaffinity(0, bytes, mask) == 0;
        const int count = isKnown ? CPU_COUNT_S(bytes, mask) : 0;
        CPU_FREE(mask);
        if (isKnown) return static_cast<unsigned>(std::max(count, 1));
    }
    return std::max(std::thread::hardware_concurrency(), 1U);
}

/// cpu.max of version 2: "max 100000" or "150000 100000".
double quotaOfMax(const std::string& group) {
    std::ifstream file(group + "/cpu.max");
    double quota = 0;
    double period = 0;
    return file >> quota >> period && quota > 0 && period > 0 ? quota / period : unlimited;
}

/// Two files of version 1; a quota of -1 is none.
double quotaOfPeriod(const std::string& group) {
    std::ifstream quotaFile(group + "/cpu.cfs_quota_us");
    std::ifstream periodFile(group + "/cpu.cfs_period_us");
    double quota = 0;
    double period = 0;
    return quotaFile >> quota && periodFile >> period && quota > 0 && period > 0 ? quota / period : unlimited;
}

/// The least quota of a group and all above it. A container may see its own group as the root.
template <class Quota>
double leastQuota(const std::string& mount, std::string path, const Quota& quota) {
    double least = quota(mount);
    while (path.size() > 1) {
        least = std::min(least, quota(mount + path));
        path.erase(path.rfind('/'));
    }
    return least;
}

std::string contentOf(const char* name) {
    std::ostringstream content;
    content << std::ifstream(name).rdbuf();
    return content.str();
}

std::atomic<unsigned>& processorsInUse() {
    static std::atomic<unsigned> count{0};
    return count;
}

}  // namespace

unsigned quotaOfGroups(const std::string& membership, const std::string& root) {
    double least = unlimited;
    std::istringstream lines(membership);
    for (std::string line; std::getline(lines, line);) {
        // "0::/path" of version 2, "4:cpu,cpuacct:/path" of version 1.
        const std::size_t first = line.find(':');
        const std::size_t second = first == std::string::npos ? first : line.find(':', first + 1);
        if (second == std::string::npos || line.compare(second + 1, 1, "/") != 0) continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        const std::string path = line.substr(second + 1);
        if (controllers.empty()) {
            least = std::min(least, leastQuota(root, path, quotaOfMax));
        } else if (("," + controllers + ",").find(",cpu,") != std::string::npos) {
            for (const std::string& name : {controllers, std::string("cpu")}) {
                least = std::min(least, leastQuota(root + "/" + name, path, quotaOfPeriod));
            }
        }
    }
    if (!(least < mostThreads)) return least < unlimited ? mostThreads : 0;
    return std::max(static_cast<unsigned>(std::ceil(least)), 1U);
}

unsigned usableProcessors() {
    static const unsigned count = [] {
        const unsigned ofMask = std::min(processorsOfMask(), mostThreads);
        const unsigned ofGroups = quotaOfGroups(contentOf("/proc/self/cgroup"), "/sys/fs/cgroup");
        return ofGroups == 0 ? ofMask : std::min(ofMask, ofGroups);
    }();
    return count;
}

unsigned threadsIn(std::string_view value) {
    while (!value.empty() && value.front() == ' ') value.remove_prefix(1);
    unsigned long count = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), count);
    if (error == std::errc::result_out_of_range) return mostThreads;
    if (error != std::errc()) return 0;
    const std::string_view rest = value.substr(static_cast<std::size_t>(end - value.data()));
    const std::size_t next = rest.find_first_not_of(' ');
    if (next != std::string_view::npos && rest[next] != ',') return 0;
    return static_cast<unsigned>(std::min<unsigned long>(count, mostThreads));
}

unsigned ThreadOptions::ofEnvironment() {
    const char* const value = std::getenv("OMP_NUM_THREADS");
    return value == nullptr ? 0 : threadsIn(value);
}

unsigned processorsToShare() {
    static const unsigned count = ThreadOptions::ofEnvironment();
    return count > 0 ? count : usableProcessors();
}

ProcessorShare::ProcessorShare(unsigned most, bool isShared) : size_(most) {
    std::atomic<unsigned>& count = processorsInUse();
    unsigned used = count.load(std::memory_order_relaxed);
    do {
        const unsigned left = processorsToShare() > used ? processorsToShare() - used : 0;
        if (isShared) size_ = std::max(std::min(most, left), 1U);
    } while (!count.compare_exchange_weak(used, used + size_, std::memory_order_relaxed));
}

ProcessorShare::~ProcessorShare() { processorsInUse().fetch_sub(size_, std::memory_order_relaxed); }

}  // namespace zirk
