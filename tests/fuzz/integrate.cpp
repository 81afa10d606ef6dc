// SPDX-License-Identifier: MIT
// The first steps of any problem, fast and plain, with zeros watched and values read inside every step.
//
// The input is a text of equations. Where it begins with a comment "//", the numbers of that line are the end, the
// tolerance and the longest step:
//     // 10 1e-18 0.5
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <vector>

#include "tests/fuzz/harness.hpp"
#include "zirk/integrator.hpp"

using namespace zirk;

namespace {

constexpr int mostSteps = 24;
constexpr std::size_t mostNames = 12;

struct Plan {
    real end = 1;
    IntegratorOptions options;
};

Plan planOf(const std::string& text) {
    Plan plan;
    if (text.compare(0, 2, "//") != 0) return plan;
    std::istringstream words(text.substr(2, text.find('\n') - 2));
    std::vector<real> numbers;
    for (std::string word; words >> word;) numbers.push_back(std::strtold(word.c_str(), nullptr));
    numbers.resize(3);
    if (std::isfinite(numbers[0])) plan.end = numbers[0];
    if (numbers[1] >= 1e-18L && numbers[1] <= 0.1L) plan.options.tolerance = numbers[1];
    if (numbers[2] > 0) plan.options.maxStep = numbers[2];
    return plan;
}

void append(std::string& seen, real number) {
    // Ten bytes hold the number; which of all that are no numbers it is, is nobody's business.
    if (std::isnan(number)) number = 0;
    seen.append(reinterpret_cast<const char*>(&number), 10);
}

/// One run, until the end, a failure, or the most steps; everything that it shows goes into `seen`.
class Course {
public:
    Course(const Problem& problem, const Plan& plan, bool plain) : problem_(problem), end_(plan.end) {
        IntegratorOptions options = plan.options;
        options.plain = plain;
        run_ = std::make_unique<Integrator>(problem, options);
        std::vector<Expression> shown;
        for (const std::string& name : problem.names()) {
            if (shown.size() == mostNames) break;
            shown.push_back(problem.expression(name));
        }
        if (!shown.empty()) {
            run_->watch(shown.front());
            run_->watch(shown.back(), Crossing::Up);
        }
        readout_ = std::make_unique<Readout>(problem, shown);
        values_.resize(shown.size());
    }

    std::string seen() {
        try {
            for (int i = 0; i < mostSteps; ++i) {
                if (!run_->step(i == mostSteps / 2 ? (run_->time() + end_) / 2 : end_)) break;
                look();
            }
        } catch (const RunError& error) {
            require(error.text().find(" at t = ") != std::string::npos, "a failure tells its time: " + error.text());
            seen_ += error.text();
            look();
        }
        return std::move(seen_);
    }

private:
    void look() {
        const real begin = run_->stepBegin();
        const real time = run_->time();
        require(std::isfinite(time), "the time is finite");
        for (const ZeroCrossing& zero : run_->crossings()) {
            require((begin <= zero.time && zero.time <= time) || (begin >= zero.time && zero.time >= time),
                    "zeros lie inside their step");
            append(seen_, zero.time);
        }
        for (const real share : {0.0L, 0.3L, 1.0L}) read(share == 1 ? time : begin + (time - begin) * share);
        append(seen_, time);
        seen_ += std::to_string(run_->statistics().repeated) + ' ' + std::to_string(run_->statistics().jumps);
    }

    void read(real time) {
        run_->read(*readout_, time, values_.data());
        for (std::size_t i = 0; i < values_.size(); ++i) {
            append(seen_, values_[i]);
            // Definitions need not be defined everywhere; what is integrated is.
            if (time != run_->time() || !isVariable(problem_.names()[i])) continue;
            require(std::isfinite(values_[i]), "the state is finite: " + problem_.names()[i]);
        }
    }

    bool isVariable(const std::string& name) const {
        return name.find('\'') != std::string::npos || problem_.explain().find(name + "' = ") != std::string::npos;
    }

    const Problem& problem_;
    real end_;
    std::unique_ptr<Integrator> run_;
    std::unique_ptr<Readout> readout_;
    std::vector<real> values_;
    std::string seen_;
};

/// Work that is legal but takes longer than a fuzzer has: long chains of derivatives, and powers of powers.
bool takesLong(const std::string& text) {
    std::size_t digits = 0;
    for (const char c : text) {
        digits = c >= '0' && c <= '9' ? digits + 1 : 0;
        if (digits > 30) return true;
    }
    return makesManyVariables(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::size_t longest = 1024;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    if (size > longest || takesLong(text)) return 0;
    try {
        const Problem problem = Problem::fromText(text);
        require(!problem.explain().empty(), "a problem can be explained");
        const Plan plan = planOf(text);
        const std::string fast = Course(problem, plan, false).seen();
        const std::string plain = Course(problem, plan, true).seen();
        require(fast == plain, "both ways give the same bits");
    } catch (const ParseError& error) {
        require(!error.text().empty(), "an error has a text");
    }
    return 0;
}
