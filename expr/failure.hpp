// SPDX-License-Identifier: MIT
// The one exception type: what ends the process with a message and a status.
#pragma once

#include <stdexcept>
#include <string>

namespace zirk {

/// Carries the exact text for standard error, line ends included, and the exit status. Only `main` catches it.
class Failure : public std::runtime_error {
public:
    Failure(const std::string& text, int status) : std::runtime_error(text), status_(status) {}

    int status() const { return status_; }

private:
    int status_;
};

}  // namespace zirk
