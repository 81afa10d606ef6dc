// SPDX-License-Identifier: MIT
// The bound is the soft limit on data: writable mappings of any kind.
#include "driver/memory_bound.hpp"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

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

/// Bytes that this process could use if it were alone; RLIM_INFINITY when nobody tells.
rlim_t memoryAtHand() {
    rlim_t bytes = RLIM_INFINITY;
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages > 0 && pageSize > 0) bytes = static_cast<rlim_t>(pages) * static_cast<rlim_t>(pageSize);
    // The limit of the container, as it is seen from inside; the text "max" is no number.
    for (const char* file : {"/sys/fs/cgroup/memory.max", "/sys/fs/cgroup/memory/memory.limit_in_bytes"}) {
        rlim_t limit = 0;
        if (std::ifstream(file) >> limit && limit > 0) bytes = std::min(bytes, limit);
    }
    return bytes;
}

}  // namespace

void boundMemory() {
    rlimit limit{};
    if (reservesHugeRanges || getrlimit(RLIMIT_DATA, &limit) != 0 || limit.rlim_cur != RLIM_INFINITY) return;
    const rlim_t bytes = memoryAtHand();
    if (bytes == RLIM_INFINITY) return;
    limit.rlim_cur = std::min(bytes - bytes / 8, limit.rlim_max);
    setrlimit(RLIMIT_DATA, &limit);
}
