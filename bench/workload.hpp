// SPDX-License-Identifier: MIT
// A workload inside a benchmark: the loop over points of a run, without the rows.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include "driver/settings.hpp"
#include "text/from_text.hpp"

using namespace zirk;

/// One line of the file workloads.
struct WorkloadLine {
    std::string name;
    std::string model;    ///< arguments of the script model
    std::string options;  ///< command-line options
};

/// All lines of FOLDER/workloads. Throws std::runtime_error when there are none.
std::vector<WorkloadLine> readWorkloads(const std::string& folder);

/// The text that the script FOLDER/model prints. Throws std::runtime_error when it fails.
std::string modelText(const std::string& folder, const std::string& arguments);

/// A prepared system and its points. One at a time is in force: the latest that lives.
class Workload {
public:
    /// As the command line would have it. Throws Error for bad options and bad input.
    Workload(const std::string& options, const std::string& text, Evaluation evaluation);
    Workload(int argc, char** argv, Evaluation evaluation);

    /// Computes the next point, after as many attempts as it needs. False, with nothing done, past the end time.
    bool nextPoint();

    /// Goes on for ever: what a benchmark of single points needs.
    void removeEnd() { settings_.tMax = realFromText("1e300"); }

    /// Multiplications with addition that the definition of products and quotients asks for in all attempts so far:
    /// k + 1 for term k of a product, k for term k of a quotient, for every node of the system once. Zero unless
    /// counted.
    long long literalMultiplyAdds() const { return literal_; }
    void countMultiplyAdds();

    const Settings& settings() const { return settings_; }
    long long attempts() const { return attempts_; }

private:
    struct Sums {
        const Differential* user;
        std::vector<std::size_t> nodes;
    };

    void prepare(std::istream& input);
    void count();

    Settings settings_;
    Calculus::Scope scope_{settings_};
    std::ostringstream log_;
    Progress progress_;
    TaylorStep taylor_;
    StepControl control_;
    Stiffness stiffness_;
    bool ended_ = false;
    long long attempts_ = 0;
    long long literal_ = 0;
    bool counting_ = false;
    std::vector<Sums> sums_;
    std::vector<ExprType> kinds_;
    std::vector<int> terms_;
};
