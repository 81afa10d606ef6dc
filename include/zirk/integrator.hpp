// SPDX-License-Identifier: MIT
// Solves an initial-value problem step by step, and answers at any time inside a step.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zirk/problem.hpp"
#include "zirk/threads.hpp"

namespace zirk {

struct IntegratorOptions {
    /// Error per step relative to the size of the solution; from 1e-18 to 0.1.
    real tolerance = 1e-18L;
    /// Longest step; 0 for no limit.
    real maxStep = 0;
    /// Term by term straight from the recurrences, to the same bits: the definition of the fast way.
    bool plain = false;
    ThreadOptions threads = {};
};

/// Which zeros of an expression count, by its sign along the integration: any, from - to +, from + to -.
enum class Crossing { Any, Up, Down };

/// A zero of a watched expression.
struct ZeroCrossing {
    /// What watch() returned.
    std::size_t watched;
    real time;
    /// Whether the expression rises there, along the integration.
    bool rising;
};

struct IntegratorStatistics {
    std::uint64_t steps = 0;
    /// Steps that were repeated shorter after the check at their end.
    std::uint64_t repeated = 0;
    /// Jumps of trunc that ended a step.
    std::uint64_t jumps = 0;
    /// Sum over steps of the order, for its mean.
    std::uint64_t orders = 0;
    real shortestStep = 0;
    real longestStep = 0;
};

/// Formulas to be evaluated together, many times.
class [[gnu::visibility("default")]] Readout {
public:
    Readout(const Problem& problem, const std::vector<Expression>& expressions);
    ~Readout();
    Readout(Readout &&) noexcept;
    Readout& operator=(Readout&&) noexcept;

    std::size_t size() const;

private:
    friend class Integrator;
    friend class Solution;
    struct Content;
    std::unique_ptr<Content> content_;
};

/// One run of a problem, forwards or backwards in time.
///
/// Order and step follow from the tolerance (A. Jorba, M. Zou, A software package for the numerical integration of ODEs
/// by means of high-order Taylor methods, 2005). After every step the solution is known on all of it as a polynomial.
class [[gnu::visibility("default")]] Integrator {
public:
    explicit Integrator(const Problem& problem, const IntegratorOptions& options = {});
    ~Integrator();
    Integrator(Integrator &&) noexcept;
    Integrator& operator=(Integrator&&) noexcept;

    /// Looks for zeros of an expression from now on; the number by which crossings() names it. A zero at the very time
    /// where the run starts does not count.
    std::size_t watch(const Expression& expression, Crossing which = Crossing::Any);

    /// One step towards `end` and not beyond it. False, with nothing done, when the run is there already. Throws
    /// RunError when the solution cannot go on: what it says names the formula and the time; the run stays at time()
    /// and can be read there and on the step before. `end` may change between steps, and lie on either side.
    bool step(real end);

    /// Begin and end of the last step; both the start before the first one.
    real stepBegin() const;
    real time() const;

    /// Zeros of the watched expressions in the last step (its begin not included), in the order in which they are met.
    const std::vector<ZeroCrossing>& crossings() const;

    /// Values of the formulas at a time of the last step, into `values`, as many as the readout has. What is not
    /// defined there is not a number.
    void read(Readout & readout, real time, real * values) const;

    const IntegratorStatistics& statistics() const;

private:
    friend class Solution;
    class Content;
    std::unique_ptr<Content> content_;
};

}  // namespace zirk
