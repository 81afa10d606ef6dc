// SPDX-License-Identifier: MIT
// A bound on the memory of the process, so that asking for too much is an error and not the end of the machine.
#pragma once

/// Bounds the data of this process to seven eighths of what the machine, or the container around it, has. Allocations
/// beyond it fail with std::bad_alloc. A bound that is set already (`ulimit -d`) stays, and under an address sanitizer,
/// which reserves far more than it uses, nothing is set.
void boundMemory();
