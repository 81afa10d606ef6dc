// SPDX-License-Identifier: MIT
// What a command does before all else.
#pragma once

namespace zirk {

/// Bounds the memory, makes a file that may not grow a write error, and occupies standard descriptors that are missing.
void prepareProcess();

}  // namespace zirk
