// SPDX-License-Identifier: MIT
// The life of the context.
#include "driver/run_context.hpp"

namespace zirk {

namespace {

RunContext context;

}  // namespace

RunContext& runContext() { return context; }

}  // namespace zirk
