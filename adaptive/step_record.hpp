// SPDX-License-Identifier: MIT
// The polynomials of one step, apart from the run that made them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "adaptive/step_series.hpp"

namespace zirk {

/// Appends a number as its 10 bytes.
void appendBytes(std::string& bytes, real x);

/// Takes numbers off the front of bytes; std::invalid_argument when there are not enough.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    real number();
    std::uint32_t count();
    double small();
    std::size_t left() const { return bytes_.size(); }

private:
    template <class T>
    T plain();
    std::string_view take(std::size_t size);

    std::string_view bytes_;
};

/// Terms of all variables as StepSeries has them: real numbers up to `wide`, doubles behind them; rows by order.
class StepRecord {
public:
    StepRecord(const StepSeries& series, const std::vector<real>& beginState, real begin);
    StepRecord(ByteReader& bytes, std::size_t variables);

    real begin() const { return begin_; }

    /// Values of some of the variables at a time of the step, each into its place of `state`; as StepSeries::gains
    /// sums them, to the same bits.
    void read(real time, const std::vector<std::uint32_t>& wanted, real* state) const;

    void appendTo(std::string& bytes) const;

private:
    const real* realRow(int k) const { return &reals_[static_cast<std::size_t>(k) * variables_]; }
    const double* doubleRow(int k) const { return &doubles_[static_cast<std::size_t>(k - wide_ - 1) * variables_]; }

    std::size_t variables_;
    real begin_;
    real scale_;
    int order_;
    int wide_;
    /// Rows 0 to wide; row 0 is the state at the begin.
    std::vector<real> reals_;
    /// Rows wide + 1 to the order.
    std::vector<double> doubles_;
};

}  // namespace zirk
