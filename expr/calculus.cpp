// SPDX-License-Identifier: MIT
// Defaults, shared constants and the step table.
#include "expr/calculus.hpp"

#include <cmath>

namespace zirk {

Calculus* Calculus::current_ = nullptr;

Calculus::Calculus()
    : step(realFromText("0.1")),
      accuracy(realFromText("1e-10")),
      zero(0),
      one(1),
      // The only constant read at extended precision.
      pi(3.14159265358979323846264338327950288419716939937510582097494459230781640628620899862803482534211706798L),
      twoPi(pi + pi),
      halfPi(pi * 0.5L),
      ln2(std::log(real{2})) {}

void Calculus::setMaxOrder(int n) {
    maxOrder = n;
    stepTable.rebuild(step, n);
}

void Calculus::setStep(double h) { changeStep(h); }

void Calculus::changeStep(real h) {
    step = h;
    stepTable.rebuild(h, maxOrder);
}

void StepTable::rebuild(real step, int size) {
    step_ = step;
    size_ = size;
    factors_.assign(1, real{0});
}

void StepTable::extend(int last) {
    for (auto i = static_cast<int>(factors_.size()); i <= last; ++i) factors_.push_back(step_ / static_cast<real>(i));
}

bool Selection::selects(const std::string& name) const {
    const std::string key = name + ":";
    const bool included = printList.empty() || printList.find(key) != std::string::npos;
    const bool excluded = !noPrintList.empty() && noPrintList.find(key) != std::string::npos;
    return included && !excluded;
}

}  // namespace zirk
