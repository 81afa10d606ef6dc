// SPDX-License-Identifier: MIT
// What the command has one of, whoever asks: signal handlers have nobody to get it from.
#pragma once

#include "command/output.hpp"
#include "driver/settings.hpp"
#include "zirk/classic_integrator.hpp"

namespace zirk {

/// Made before `main`; the record of settings is never freed.
struct RunContext {
    Settings* settings = new Settings;
    /// Both streams and the run, while there are some.
    Output* output = nullptr;
    const ClassicIntegrator* run = nullptr;
};

RunContext& runContext();

}  // namespace zirk
