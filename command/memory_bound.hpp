// SPDX-License-Identifier: MIT
// A bound on the memory of the process, so that asking for too much is an error and not the end of the machine.
#pragma once

#include <sys/resource.h>

#include <string>
#include <vector>

namespace zirk {

/// Bounds the data of this process to seven eighths of what the machine, or the container around it, has. Allocations
/// beyond it fail with std::bad_alloc. A bound that is set already (`ulimit -d`) stays, and under an address sanitizer,
/// which reserves far more than it uses, nothing is set.
void boundMemory();

/// Bytes that a process could use if it were alone: those of the machine or, when one is less, the least limit above 0
/// that one of these files holds. RLIM_INFINITY stands for a machine that does not tell.
rlim_t memoryAtHand(rlim_t machine, const std::vector<std::string>& limitFiles);

/// Seven eighths of so many bytes, rounded up; RLIM_INFINITY stays what it is.
rlim_t memoryShare(rlim_t bytes);

}  // namespace zirk
