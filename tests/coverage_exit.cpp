// SPDX-License-Identifier: MIT
// Keeps the counters of processes that end by `_exit`, as the interrupt menu and its tests do; only in coverage builds.
extern "C" {
#include <gcov.h>

// NOLINTBEGIN(bugprone-reserved-identifier): names that the linker prescribes.
[[noreturn]] void __real__exit(int status);

/// The linker sends every `_exit` here.
[[noreturn]] void __wrap__exit(int status) {
    __gcov_dump();
    __real__exit(status);
}
// NOLINTEND(bugprone-reserved-identifier)
}
