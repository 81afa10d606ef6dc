// SPDX-License-Identifier: MIT
// One run of a program under limits of time and output.
#pragma once

#include <string>
#include <vector>

namespace random_systems {

/// What a run left behind.
struct Outcome {
    std::string results;
    /// The processor times masked.
    std::string log;
    /// Exit status; 128 + N when signal N ended the run.
    int status = 0;
    /// Ended by the limits and not by itself: what it wrote may go on.
    bool cut = false;
};

/// Runs the program with this text as standard input. std::runtime_error when it cannot be started.
Outcome run(const std::string& program, const std::vector<std::string>& arguments, const std::string& input);

}  // namespace random_systems
