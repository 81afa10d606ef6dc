// SPDX-License-Identifier: MIT
// Steps in a row, and the one that a time belongs to.
#include "zirk/solution.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "adaptive/integrator_content.hpp"
#include "adaptive/readout.hpp"
#include "adaptive/step_record.hpp"

namespace zirk {

struct Solution::Content {
    std::shared_ptr<const ProblemContent> problem;
    std::vector<StepRecord> steps;
    real end;
    std::vector<real> endState;

    bool isForward() const { return steps.empty() || end > steps.front().begin(); }

    /// The step that a time belongs to; the first one has all times before it.
    const StepRecord& stepOf(real time) const {
        const bool isForward = this->isForward();
        const auto behind = std::upper_bound(steps.begin() + 1, steps.end(), time, [&](real t, const StepRecord& step) {
            return isForward ? t < step.begin() : t > step.begin();
        });
        return *(behind - 1);
    }
};

Solution::Solution(const Problem& problem) : content_(std::make_unique<Content>()) {
    content_->problem = ProblemAccess::share(problem);
    content_->end = content_->problem->start;
    for (const ProblemContent::Variable& variable : content_->problem->variables) {
        content_->endState.push_back(variable.start);
    }
}
Solution::~Solution() = default;
Solution::Solution(Solution&&) noexcept = default;
Solution& Solution::operator=(Solution&&) noexcept = default;

void Solution::add(const Integrator& run) {
    const AdaptiveRun& from = *run.content_;
    const bool turnsBack = steps() > 0 && (from.time() > from.stepBegin()) != content_->isForward();
    if (from.problem() != content_->problem.get() || from.time() == from.stepBegin() ||
        from.stepBegin() != content_->end || turnsBack) {
        throw std::invalid_argument("the step does not go on where the solution ends");
    }
    content_->steps.emplace_back(from.series(), from.beginState(), from.stepBegin());
    content_->end = from.time();
    content_->endState = from.state();
}

std::size_t Solution::steps() const { return content_->steps.size(); }

real Solution::time(std::size_t i) const { return i < steps() ? content_->steps[i].begin() : content_->end; }

bool Solution::contains(real time) const {
    return time >= std::min(begin(), end()) && time <= std::max(begin(), end());
}

void Solution::read(Readout& readout, const real* times, std::size_t count, real* values) const {
    std::vector<real> state(content_->endState.size());
    for (std::size_t i = 0; i < count; ++i) {
        const real time = times[i];
        if (!contains(time)) throw std::out_of_range("a time outside of the solution");
        const bool isEnd = time == content_->end;
        if (!isEnd) content_->stepOf(time).read(time, readout.content_->variables, state.data());
        readout.content_->evaluation.values(time, isEnd ? content_->endState.data() : state.data(),
                                            values + i * readout.size());
    }
}

std::string Solution::bytes() const {
    std::string bytes;
    for (const StepRecord& step : content_->steps) step.appendTo(bytes);
    for (const real& value : content_->endState) appendBytes(bytes, value);
    appendBytes(bytes, content_->end);
    return bytes;
}

Solution Solution::restored(const Problem& problem, std::string_view bytes) {
    Solution solution(problem);
    Content& content = *solution.content_;
    ByteReader reader(bytes);
    const std::size_t variables = content.endState.size();
    constexpr std::size_t realSize = 10;
    const std::size_t endSize = (variables + 1) * realSize;
    while (reader.left() > endSize) content.steps.emplace_back(reader, variables);
    for (real& value : content.endState) value = reader.number();
    content.end = reader.number();
    if (reader.left() > 0 || solution.begin() != problem.start() || !std::isfinite(content.end)) {
        throw std::invalid_argument("the bytes are no solution of this problem");
    }
    for (std::size_t i = 0; i < solution.steps(); ++i) {
        const real from = solution.time(i);
        const real to = solution.time(i + 1);
        if (content.isForward() ? from < to : from > to) continue;
        throw std::invalid_argument("the steps of a solution are in disorder");
    }
    return solution;
}

}  // namespace zirk
