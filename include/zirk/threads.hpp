// SPDX-License-Identifier: MIT
// How many threads may work on one step of a run.
#pragma once

namespace zirk {

/// The threads of one run. They change nothing but the time that it takes: every bit of the results is the same.
///
/// Only what is large enough is cut into parts; for everything else no thread is started. A run keeps its threads until
/// it is destroyed; between steps they sleep. They take no signals and call nothing of the program's.
struct ThreadOptions {
    /// Threads that work on one step at most, the caller's included; at most 256 count. 0: as many as the environment
    /// variable OMP_NUM_THREADS says, else as there are processors that this process may use; and only those that no
    /// other such run of the process is using at the moment, so that several runs at once do not take more together.
    unsigned most = 1;
    /// Cuts small systems too, which makes them slower: for tests.
    bool always = false;
};

/// The threads that the environment asks for by OMP_NUM_THREADS (OpenMP 5.0, section 6.2: a positive number, or a list
/// of which the first counts), at most 256; 0 when it asks for nothing or the value is no such number.
[[gnu::visibility("default")]] unsigned threadsOfEnvironment();

}  // namespace zirk
