// SPDX-License-Identifier: MIT
// A workload inside a benchmark: the loop over points of a run, without the rows.
#pragma once

#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "classic/classic_run.hpp"
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

/// A prepared system and its points.
class Workload {
public:
    /// As the command line would have it. Throws Error for bad options and bad input.
    Workload(const std::string& options, const std::string& text, Evaluation evaluation);
    Workload(int argc, char** argv, Evaluation evaluation);

    /// Computes the next point, after as many attempts as it needs. False, with nothing done, past the end time.
    bool nextPoint();

    /// Multiplications with addition that the definition of products and quotients asks for in all attempts so far:
    /// k + 1 for term k of a product, k for term k of a quotient, for every node of the system once. Zero unless
    /// counted.
    long long literalMultiplyAdds() const { return literal_; }
    void countMultiplyAdds();

    const ClassicRun& run() const { return *run_; }
    long long attempts() const { return run_->statistics().points + run_->statistics().rejected; }

private:
    struct Sums {
        std::size_t user;
        std::vector<std::size_t> nodes;
    };

    void prepare(std::istream& input, const ClassicOptions& options, Evaluation evaluation);
    void count();

    std::unique_ptr<ClassicRun> run_;
    long long literal_ = 0;
    bool counting_ = false;
    std::vector<Sums> sums_;
    std::vector<ExprType> kinds_;
    std::vector<int> terms_;
};
