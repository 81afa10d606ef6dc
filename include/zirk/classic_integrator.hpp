// SPDX-License-Identifier: MIT
// Integration by the rules of the command zirk, to the same bits.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "zirk/model.hpp"

namespace zirk {

/// How the series are summed; the results are the same to the last bit.
enum class Evaluation {
    /// By the nodes of the formulas, which is the definition.
    NodeByNode,
    /// By a compiled program, many times as fast.
    Compiled
};

/// One test for stiffness: binary exponents of the largest and the smallest last term but one of all variables. The
/// names live as long as the run.
struct StiffnessTest {
    bool isStiff = false;
    std::string_view largestName;
    std::string_view smallestName;
    int largestExponent = 0;
    int smallestExponent = 0;
    int difference = 0;
};

/// Is told what a run decides between its points. Whatever it throws goes through.
class [[gnu::visibility("default")]] ClassicObserver {
public:
    virtual ~ClassicObserver() = default;
    /// The point behind `time` is done again with half the step.
    virtual void stepHalved(real step, real time);
    /// The step grew by a fifth after the point behind `time`.
    virtual void stepEnlarged(real step, real time);
    virtual void stiffnessTested(const StiffnessTest& test);
    /// The variable to be watched for a period does not exist; the run goes on without.
    virtual void periodUnknown(const std::string& name);
};

/// How much a run has done so far.
struct ClassicStatistics {
    long long points = 0;
    long long rejected = 0;
};

/// A run from time 0 on, point by point.
///
/// Variables are numbered from 0 in the bytewise order of their names; those that stand for functions ("%0", "%1", ...)
/// come first. Values and terms are those of the pass that `next` made last; after a rejected one, time, step and
/// number of the pass are those of the attempt that comes next. Several threads may read one run at the same time, as
/// long as none of them calls `next`.
class [[gnu::visibility("default")]] ClassicIntegrator {
public:
    /// Prepares the equations for a run: expands functions and takes start values. Throws Error where a name is not
    /// defined or a function cannot be expanded. The observer must live as long as the run.
    explicit ClassicIntegrator(const Model& model, const ClassicOptions& options = {},
                               ClassicObserver* observer = nullptr, Evaluation evaluation = Evaluation::Compiled);
    ~ClassicIntegrator();
    ClassicIntegrator(ClassicIntegrator && other) noexcept;
    ClassicIntegrator& operator=(ClassicIntegrator&& other) noexcept;

    enum class Pass {
        /// The point needed too many terms and will be done again with half the step.
        Rejected,
        /// A point is there; the first is that of time 0.
        Point,
        /// Nothing more to do: the end time, a steady state or a period is reached. The last point stays as it is.
        End
    };

    /// One pass over the equations. Throws RunError when the run cannot go on, and whatever the observer throws. The
    /// run is over then, with values that may belong to half a pass: every further call throws the same again.
    Pass next();

    real time() const;
    /// Time of the accepted point before; the end of the step that led to this point is time().
    real previousTime() const;
    real step() const;
    /// Terms that the longest sum of the last pass needed.
    int order() const;
    /// The end time has cut the step; points at the end time follow, or a shorter step when the point is rejected.
    bool isLastStep() const;
    /// Number of the pass, counted from 0 and in 32 bits.
    int pass() const;
    const ClassicStatistics& statistics() const;
    const StiffnessTest& stiffness() const;

    std::size_t size() const;
    const std::string& name(std::size_t variable) const;
    /// Throws Error for a name that is not defined.
    std::size_t index(const std::string& name) const;
    const real& value(std::size_t variable) const;
    real value(const std::string& name) const { return value(index(name)); }
    /// Index of the last Taylor term of the step that led to this point; -1 for definitions, 0 at time 0.
    int highestTerm(std::size_t variable) const;
    /// Term k, h^k y^(k) / k!, of the step that led to this point; k from 0 to highestTerm. A definition is constant
    /// over a step for the equations that use it: its term 0 is the value that they see, all others are 0.
    real term(std::size_t variable, int k) const;
    /// Terms 0 to highestTerm; none for definitions.
    std::vector<real> terms(std::size_t variable) const;

    /// What the classic rules make of the model otherwise than its author may expect, a sentence for each kind of
    /// thing.
    std::vector<std::string> remarks() const;

    /// One line: the equation as it is solved and, for one with a derivative, the value at the start of the step, as
    /// the command dumps it.
    std::string equation(std::size_t variable) const;

private:
    std::unique_ptr<class ClassicRun> run_;
};

}  // namespace zirk
