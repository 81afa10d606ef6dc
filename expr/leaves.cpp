// SPDX-License-Identifier: MIT
// Terms and values of constants, time and variables.
#include "expr/leaves.hpp"

#include <cmath>
#include <ostream>

#include "expr/calculus.hpp"
#include "expr/series_sum.hpp"
#include "text/from_text.hpp"
#include "zirk/error.hpp"

namespace zirk {

Number::Number(const char* text) : Number(realFromText(text)) {}

void Number::GetDY(int, real&) { throw Error("#(ERR) virtual void Number::GetDY(int, real&) called!!!\n", 1); }

void Number::DY(int k, real& out) { out = k == 0 ? start_ : 0; }

void Number::Result(real& out, bool) { out = start_; }

void Number::InitValue(real& out) { out = start_; }

void Number::MakeDerivative() { derivative_ = Ref(new Number(0)); }

void Number::printPart(std::ostream& out, int) const { out << start_; }

void Time::GetDY(int, real&) { throw Error("#(ERR) virtual void Time::GetDY(int, real&) called!!!\n", 1); }

void Time::BeginStep() {
    const int stamp = Calculus::current().stepStamp;
    if (termStamp_ == stamp) return;
    termStamp_ = stamp;
    start_ = result_;
}

void Time::DY(int k, real& out) {
    BeginStep();
    out = k == 0 ? start_ : k == 1 ? real{1} : real{0};
}

void Time::Result(real& out, bool) { out = Calculus::current().time; }

void Time::InitValue(real& out) { out = 0; }

void Time::MakeDerivative() { derivative_ = Ref(new Number(1)); }

void Time::printPart(std::ostream& out, int) const { out << "t"; }

Differential::Differential(ExprType type, const std::string& name, const Ref& rightHandSide)
    : Expr(type), name_(name), rightHandSide_(rightHandSide) {}

Differential::Differential(const std::string& name, const Ref& rightHandSide, real initialValue)
    : Differential(ExprType::Differential, name, rightHandSide) {
    start_ = initialValue;
    result_ = initialValue;
    // Current already: the first point shows the start value and sums no series.
    resultStamp_ = Calculus::current().stepStamp;
}

void Differential::setInitialValue(real value) {
    if (!sameValue(start_, value)) ++Calculus::current().initialStamp;
    start_ = value;
    result_ = value;
}

void Differential::detach() {
    rightHandSide_ = Ref();
    derivative_ = Ref();
    origin_ = Ref();
}

void Differential::GetDY(int k, real& out) {
    if (k == 0) {
        out = start_;
        return;
    }
    rightHandSide_->DY(k - 1, out);
    out = out * Calculus::current().stepTable[k];
}

void Differential::BeginStep() {
    const Calculus& calculus = Calculus::current();
    if (termStamp_ == calculus.stepStamp) return;
    termStamp_ = calculus.stepStamp;
    highest_ = 0;
    // A repeated step starts again from the same value.
    if (calculus.prevStepStamp != calculus.stepStamp) copyBits(start_, result_);
    copyBits(termSlot(0), start_);
}

void Differential::Result(real& out, bool) {
    const Calculus& calculus = Calculus::current();
    SeriesSum series;
    series.sum = 0;
    while (series.wantsMore(calculus)) {
        real term = 0;
        DY(series.k, term);
        series.add(term, calculus);
    }
    takeSum(series);
    out = result_;
}

void Differential::takeSum(const SeriesSum& series) {
    Calculus& calculus = Calculus::current();
    ownOrder_ = series.order();
    onlyZeroTerms_ = series.onlyZeros;
    if (ownOrder_ > calculus.orderUsed) calculus.orderUsed = ownOrder_;
    result_ = series.sum;
}

void Differential::adopt(const SeriesSum& series) {
    takeSum(series);
    resultStamp_ = Calculus::current().stepStamp;
    noteSteadiness();
}

void Differential::InitValue(real& out) { out = start_; }

void Differential::MakeDerivative() { derivative_ = rightHandSide_; }

void Differential::printPart(std::ostream& out, int) const { out << '[' << name_ << ']'; }

void Differential::TreeDump(std::ostream& out) const {
    out << "#(TREEDUMP) DIF: \t" << name_ << "' = ";
    rightHandSide_->Print(out);
    out << " & " << start_ << ";\n";
}

void Algebraic::GetDY(int, real&) { throw Error("#(ERR) virtual void Algebraic::GetDY(int, real&) called!!!\n", 1); }

void Algebraic::BeginStep() {
    const int stamp = Calculus::current().stepStamp;
    if (termStamp_ == stamp) return;
    termStamp_ = stamp;
    start_ = result_;
}

void Algebraic::DY(int k, real& out) {
    BeginStep();
    out = k == 0 ? start_ : 0;
}

void Algebraic::Result(real& out, bool) {
    BeginStep();
    rightHandSide()->Value(out);
}

void Algebraic::InitValue(real& out) { rightHandSide()->InitialValue(out); }

void Algebraic::MakeDerivative() { derivative_ = rightHandSide()->Derivative(); }

void Algebraic::printPart(std::ostream& out, int) const { out << '{' << name() << '}'; }

void Algebraic::TreeDump(std::ostream& out) const {
    out << "#(TREEDUMP) ALG: \t" << name() << " = ";
    rightHandSide()->Print(out);
    out << ";\n";
}

}  // namespace zirk
