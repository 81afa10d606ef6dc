// SPDX-License-Identifier: MIT
// The loop over steps, and over what is due within each.
#include "python/record.hpp"

#include <algorithm>

namespace zirk::python {

namespace {

/// The times of a plan, one after the other.
class RowTimes {
public:
    RowTimes(const RowPlan& plan, real start, real end) : plan_(plan), start_(start), end_(end) {
        // All of them are the same time.
        if (start == end) next_ = plan.intervals;
    }

    std::optional<real> next() const {
        if (plan_.listed) {
            return next_ < plan_.listed->size() ? std::optional<real>((*plan_.listed)[next_]) : std::nullopt;
        }
        const std::uint64_t intervals = plan_.intervals;
        if (intervals == 0 || next_ > intervals) return std::nullopt;
        if (next_ == intervals) return end_;
        const auto count = static_cast<real>(next_);
        if (plan_.spacing > 0) return start_ + (end_ > start_ ? plan_.spacing : -plan_.spacing) * count;
        return start_ + (end_ - start_) * count / static_cast<real>(intervals);
    }
    void advance() { ++next_; }

private:
    const RowPlan& plan_;
    real start_;
    real end_;
    std::uint64_t next_ = 0;
};

std::vector<Expression> expressionsOfNames(const Problem& problem) {
    std::vector<Expression> expressions;
    for (const std::string& name : problem.names()) expressions.push_back(problem.expression(name));
    return expressions;
}

class Recorder {
public:
    Recorder(const RunPlan& plan, Record& record, Ticker& ticker)
        : plan_(plan),
          record_(record),
          ticker_(ticker),
          run_(record.problem, plan.integrator),
          readout_(record.problem, expressionsOfNames(record.problem)),
          times_(plan.rows, record.problem.start(), plan.end),
          hasRowsAtSteps_(!plan.rows.listed && plan.rows.intervals == 0),
          isForward_(plan.end >= record.problem.start()),
          values_(readout_.size()) {
        for (const auto& [expression, which] : plan.watched) run_.watch(expression, which);
        record.rows.columns.resize(values_.size());
        record.events.columns.resize(values_.size());
        if (plan.isDense) record.dense.emplace(record.problem);
    }

    void solve() {
        if (hasRowsAtSteps_) addRow(run_.time(), record_.rows);
        addRowsTo(run_.time());
        try {
            while (record_.endedBy < 0 && run_.step(plan_.end)) {
                if (plan_.isDense) record_.dense->add(run_);
                finishStep();
                ticker_.tick(run_.time(), run_.statistics().steps);
            }
        } catch (...) {
            record_.statistics = run_.statistics();
            throw;
        }
        record_.statistics = run_.statistics();
    }

private:
    void addRow(real time, Table& table) {
        run_.read(readout_, time, values_.data());
        table.times.push_back(time);
        for (std::size_t i = 0; i < values_.size(); ++i) table.columns[i].push_back(values_[i]);
    }

    void addRowsTo(real time) {
        for (std::optional<real> next; (next = times_.next()); times_.advance()) {
            if (isForward_ ? *next > time : *next < time) return;
            addRow(*next, record_.rows);
            ticker_.tick(time, run_.statistics().steps);
        }
    }

    void finishStep() {
        for (const ZeroCrossing& zero : run_.crossings()) {
            addRowsTo(zero.time);
            addRow(zero.time, record_.events);
            record_.watched.push_back(static_cast<std::uint32_t>(zero.watched));
            record_.rising.push_back(zero.rising);
            if (zero.watched >= plan_.untilCount) continue;
            std::vector<real>& times = record_.rows.times;
            if (times.empty() || times.back() != zero.time) addRow(zero.time, record_.rows);
            record_.end = zero.time;
            record_.endedBy = static_cast<std::int64_t>(zero.watched);
            return;
        }
        addRowsTo(run_.time());
        if (hasRowsAtSteps_) addRow(run_.time(), record_.rows);
        record_.end = run_.time();
    }

    const RunPlan& plan_;
    Record& record_;
    Ticker& ticker_;
    Integrator run_;
    Readout readout_;
    RowTimes times_;
    bool hasRowsAtSteps_;
    bool isForward_;
    std::vector<real> values_;
};

}  // namespace

bool Record::contains(real time) const {
    return time >= std::min(problem.start(), end) && time <= std::max(problem.start(), end);
}

void solve(const RunPlan& plan, Record& record, Ticker& ticker) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point begin = Clock::now();
    const auto measure = [&] { record.seconds = std::chrono::duration<double>(Clock::now() - begin).count(); };
    try {
        Recorder(plan, record, ticker).solve();
    } catch (...) {
        measure();
        throw;
    }
    measure();
}

}  // namespace zirk::python
