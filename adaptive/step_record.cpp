// SPDX-License-Identifier: MIT
// Copies of terms, and their sums from the small end.
#include "adaptive/step_record.hpp"

#include <cmath>
#include <cstring>
#include <stdexcept>

#include "adaptive/lanes.hpp"

namespace zirk {

namespace {

/// Of a real number; what follows in memory is padding.
constexpr std::size_t realSize = 10;

/// More than any tolerance asks for.
constexpr std::uint32_t mostOrder = 1000;

template <class T>
void appendPlain(std::string& bytes, T x) {
    char raw[sizeof(T)];
    std::memcpy(raw, &x, sizeof(T));
    bytes.append(raw, sizeof(T));
}

}  // namespace

void appendBytes(std::string& bytes, real x) {
    char raw[sizeof(real)];
    std::memcpy(raw, &x, sizeof raw);
    bytes.append(raw, realSize);
}

std::string_view ByteReader::take(std::size_t size) {
    if (bytes_.size() < size) throw std::invalid_argument("the bytes of a solution end early");
    const std::string_view taken = bytes_.substr(0, size);
    bytes_.remove_prefix(size);
    return taken;
}

template <class T>
T ByteReader::plain() {
    T x;
    std::memcpy(&x, take(sizeof(T)).data(), sizeof(T));
    return x;
}

std::uint32_t ByteReader::count() { return plain<std::uint32_t>(); }
double ByteReader::small() { return plain<double>(); }

real ByteReader::number() {
    real x = 0;
    std::memcpy(&x, take(realSize).data(), realSize);
    return x;
}

StepRecord::StepRecord(const StepSeries& series, const std::vector<real>& beginState, real begin)
    : variables_(beginState.size()),
      begin_(begin),
      scale_(series.scale()),
      order_(series.order()),
      wide_(series.wide()),
      reals_(beginState) {
    reals_.reserve(static_cast<std::size_t>(wide_ + 1) * variables_);
    doubles_.reserve(static_cast<std::size_t>(order_ - wide_) * variables_);
    const auto variables = static_cast<ValueIndex>(variables_);
    for (int k = 1; k <= wide_; ++k) {
        for (ValueIndex i = 0; i < variables; ++i) reals_.push_back(series.variableTerm(i, k));
    }
    for (int k = wide_ + 1; k <= order_; ++k) {
        for (ValueIndex i = 0; i < variables; ++i) doubles_.push_back(static_cast<double>(series.variableTerm(i, k)));
    }
}

StepRecord::StepRecord(ByteReader& bytes, std::size_t variables)
    : variables_(variables), begin_(bytes.number()), scale_(bytes.number()) {
    const std::uint32_t order = bytes.count();
    const std::uint32_t wide = bytes.count();
    const bool isSound = order >= 1 && order <= mostOrder && wide >= 1 && wide <= order && std::isfinite(begin_) &&
                         std::isfinite(scale_) && scale_ != 0;
    if (!isSound) throw std::invalid_argument("the bytes are no solution");
    order_ = static_cast<int>(order);
    wide_ = static_cast<int>(wide);
    const std::size_t reals = (wide + 1) * variables;
    const std::size_t doubles = (order - wide) * variables;
    // Before memory is asked for.
    if (bytes.left() < reals * realSize + doubles * sizeof(double)) {
        throw std::invalid_argument("the bytes of a solution end early");
    }
    reals_.resize(reals);
    for (real& term : reals_) term = bytes.number();
    doubles_.resize(doubles);
    for (double& term : doubles_) term = bytes.small();
}

void StepRecord::read(real time, const std::vector<std::uint32_t>& wanted, real* state) const {
    const real u = (time - begin_) / scale_;
    {
        const FlushTinyDoubles flush;
        const auto x = static_cast<double>(u);
        for (const std::uint32_t i : wanted) {
            double sums[2] = {};
            for (int k = order_; k > wide_; --k) {
                double& sum = sums[static_cast<unsigned>(k - wide_) % 2];
                sum = sum * (x * x) + doubleRow(k)[i];
            }
            state[i] = sums[1] + sums[0] * x;
        }
    }
    for (const std::uint32_t i : wanted) {
        real sum = state[i];
        for (int k = wide_; k >= 1; --k) sum = sum * u + realRow(k)[i];
        state[i] = realRow(0)[i] + sum * u;
    }
}

void StepRecord::appendTo(std::string& bytes) const {
    appendBytes(bytes, begin_);
    appendBytes(bytes, scale_);
    appendPlain(bytes, static_cast<std::uint32_t>(order_));
    appendPlain(bytes, static_cast<std::uint32_t>(wide_));
    for (const real& term : reals_) appendBytes(bytes, term);
    for (const double term : doubles_) appendPlain(bytes, term);
}

}  // namespace zirk
