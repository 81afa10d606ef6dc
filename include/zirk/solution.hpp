// SPDX-License-Identifier: MIT
// The solution of a run as a function of time, kept after the run.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "zirk/integrator.hpp"

namespace zirk {

/// The polynomials of all steps of a run, one after the other. Begins with the start values alone.
///
/// Values are to the last bit those that the run itself gives for a time of its last step. A step of n variables at
/// order p takes at most 16 n (p + 1) bytes, about two thirds of that where terms become small quickly. What is kept
/// does not change when more is added; any number of threads may read at the same time, each with a readout of its own.
class [[gnu::visibility("default")]] Solution {
public:
    explicit Solution(const Problem& problem);
    ~Solution();
    Solution(Solution &&) noexcept;
    Solution& operator=(Solution&&) noexcept;

    /// Keeps the last step of a run of the same problem. Throws std::invalid_argument when the step does not begin
    /// where the solution ends.
    void add(const Integrator& run);

    std::size_t steps() const;
    /// Where step i begins; for i = steps() the end of the last one.
    real time(std::size_t i) const;
    real begin() const { return time(0); }
    real end() const { return time(steps()); }
    bool contains(real time) const;

    /// Values of the formulas at times of the solution, in any order: those for times[i] begin at
    /// values[i * readout.size()]. What is not defined there is not a number. Throws std::out_of_range for a time that
    /// the solution does not contain; the values are unspecified then.
    void read(Readout & readout, const real* times, std::size_t count, real* values) const;

    /// All that is kept as bytes, for `restored` on the same kind of machine.
    std::string bytes() const;
    /// Of the problem that the bytes come from, read anew. Throws std::invalid_argument for bytes that are no solution
    /// of a problem with as many variables.
    static Solution restored(const Problem& problem, std::string_view bytes);

private:
    struct Content;
    std::unique_ptr<Content> content_;
};

}  // namespace zirk
