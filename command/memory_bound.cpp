// SPDX-License-Identifier: MIT
// The bound is the soft limit on data: writable mappings of any kind.
#include "command/memory_bound.hpp"

#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace zirk {

#if defined(__has_feature)
#define ZIRK_HAS_FEATURE(x) __has_feature(x)
#else
#define ZIRK_HAS_FEATURE(x) 0
#endif

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || ZIRK_HAS_FEATURE(address_sanitizer) || \
    ZIRK_HAS_FEATURE(memory_sanitizer)
constexpr bool reservesHugeRanges = true;
#else
constexpr bool reservesHugeRanges = false;
#endif

/// RLIM_INFINITY when nobody tells.
rlim_t memoryOfTheMachine() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0) return RLIM_INFINITY;
    return static_cast<rlim_t>(pages) * static_cast<rlim_t>(pageSize);
}

}  // namespace

rlim_t memoryAtHand(rlim_t machine, const std::vector<std::string>& limitFiles) {
    rlim_t bytes = machine;
    for (const std::string& file : limitFiles) {
        // The text "max" is no number.
        rlim_t limit = 0;
        if (std::ifstream(file) >> limit && limit > 0) bytes = std::min(bytes, limit);
    }
    return bytes;
}

rlim_t memoryShare(rlim_t bytes) { return bytes == RLIM_INFINITY ? bytes : bytes - bytes / 8; }

void boundMemory() {
    rlimit limit{};
    if (reservesHugeRanges || getrlimit(RLIMIT_DATA, &limit) != 0 || limit.rlim_cur != RLIM_INFINITY) return;
    // The limits of the container, as they are seen from inside.
    const rlim_t bytes = memoryAtHand(memoryOfTheMachine(),
                                      {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"});
    limit.rlim_cur = std::min(memoryShare(bytes), limit.rlim_max);
    setrlimit(RLIMIT_DATA, &limit);
}

}  // namespace zirk
