// SPDX-License-Identifier: MIT
// The life of the record.
#include "driver/settings.hpp"

namespace zirk {

namespace {

struct RunContext {
    Settings* settings = new Settings;
    Calculus::Scope scope{*settings};
};

RunContext context;

}  // namespace

Settings& settings() { return *context.settings; }

}  // namespace zirk
