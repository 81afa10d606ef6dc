// SPDX-License-Identifier: MIT
// One law after the other, compiled once for every kind of number and processor.
#include "adaptive/order_loop.hpp"

#include "adaptive/lanes.hpp"

namespace zirk {

namespace {

using Instruction = Arrangement::Instruction;

/// Term k of values, law by law; Law says which recurrence is which.
///
/// Sums leave out the products with terms k, which may just have been written: reading them would wait for the memory.
template <class T>
class Order {
public:
    Order(const OrderTables<T>& tables, int k)
        : a_(tables.now),
          b_(tables.now),
          now_(tables.now),
          row_(tables.rows + static_cast<std::size_t>(k) * tables.arrangement->rowLength),
          first_(tables.first),
          reciprocals_(tables.reciprocals),
          numbers_(tables.numbers),
          newest_(tables.cells + k),
          newestFalling_(tables.cells - k),
          second_(tables.cells + 1),
          fallen_(newestFalling_ + 1),
          count_(static_cast<std::size_t>(k) - 1),
          tables_(tables),
          k_(k) {}

    /// For the values of some groups, whose instructions follow each other.
    void run(const std::vector<Arrangement::Group>& groups, const std::vector<Instruction>& loop) const {
        const Instruction* i = loop.data();
        for (const Arrangement::Group& group : groups) i = runGroup(group, i);
    }

    /// The same where variables may be an order ahead: their terms k come from their row.
    void run(const Sections::Section& section) {
        const Instruction* i = section.loop.data();
        for (const Sections::Group& group : section.groups) {
            a_ = group.firstAreVariables ? row_ : now_;
            b_ = group.secondAreVariables ? row_ : now_;
            i = runGroup(group, i);
        }
    }

private:
    /// The first instruction behind the group.
    const Instruction* runGroup(const Arrangement::Group& group, const Instruction* at) const {
        switch (group.law) {
            case Law::Time:
                return each(group, at, [this](const Instruction&) { return k_ == 1 ? tables_.scale : T{0}; });
            case Law::Add:
                return each(group, at, [this](const Instruction& i) { return a_[i.a] + b_[i.b]; });
            case Law::Subtract:
                return each(group, at, [this](const Instruction& i) { return a_[i.a] - b_[i.b]; });
            case Law::Negate:
            case Law::FromNumber:
                return each(group, at, [this](const Instruction& i) { return -a_[i.a]; });
            case Law::AddNumber:
                return each(group, at, [this](const Instruction& i) { return a_[i.a]; });
            case Law::Scale:
                return each(group, at, [this](const Instruction& i) { return a_[i.a] * numbers_[i.value]; });
            case Law::Ratio:
                return each(group, at, [this](const Instruction& i) { return a_[i.a] / numbers_[i.value]; });
            case Law::ScaleBy:
                return each(group, at, [this](const Instruction& i) { return a_[i.a] * first_[i.b]; });
            case Law::RatioBy:
                return each(group, at, [this](const Instruction& i) { return over(a_[i.a], i.b); });
            case Law::Product:
                return eachSum(group, at, [this](const Instruction& i, T sum) {
                    return numbers_[i.value] * (sum + (first_[i.a] * b_[i.b] + a_[i.a] * first_[i.b]));
                });
            case Law::SquareLaw:
                return eachSum(group, at, [this](const Instruction& i, T sum) {
                    return numbers_[i.value] * (sum + 2 * (first_[i.a] * a_[i.a]));
                });
            case Law::Quotient:
                return eachSum(group, at, [this](const Instruction& i, T sum) {
                    return over(numbers_[i.value] * a_[i.a] - (sum + b_[i.b] * first_[i.value]), i.b);
                });
            case Law::Reciprocal:
                return eachSum(group, at, [this](const Instruction& i, T sum) {
                    return -over(sum + b_[i.b] * first_[i.value], i.b);
                });
            case Law::Root:
                return eachSum(group, at,
                               [this](const Instruction& i, T sum) { return over((a_[i.a] - sum) / 2, i.value); });
            case Law::Power:
                return each(group, at, [this](const Instruction& i) {
                    const T last = a_[i.a] * first_[i.value];
                    const TwoSums<T> sums =
                        sumsOfProducts(second_ + i.x, fallen_ + i.y, second_ + i.z, fallen_ + i.y, count_);
                    const T heavy = (sums.a + static_cast<T>(k_) * last) * (numbers_[i.value] + 1);
                    return over(byOrder(heavy) - (sums.b + last), i.a);
                });
            case Law::ProductRate:
                return eachSum(group, at, [this](const Instruction& i, T sum) {
                    return numbers_[i.value] * (byOrder(sum) + a_[i.a] * first_[i.b]);
                });
            case Law::QuotientRate:
                return eachSum(group, at, [this](const Instruction& i, T sum) {
                    return over(numbers_[i.value] * a_[i.a] - byOrder(sum), i.b);
                });
            default:
                return each(group, at, [](const Instruction&) { return T{0}; });
        }
    }

    T over(T x, ValueIndex value) const { return overFirst(x, value, first_, reciprocals_); }
    T byOrder(T x) const { return overOrder(x, k_, tables_.ofOrder); }

    void store(const Arrangement::Group& group, const Instruction& i, T term) const {
        now_[i.value] = term;
        if (!group.isKept) return;
        newest_[i.rising] = term;
        newestFalling_[i.falling] = term;
        if (group.isWeighted) newest_[i.weighted] = static_cast<T>(k_) * term;
    }

    template <class Law>
    const Instruction* each(const Arrangement::Group& group, const Instruction* i, const Law& law) const {
        const Instruction* const end = i + (group.end - group.begin);
        for (; i != end; ++i) store(group, *i, law(*i));
        return end;
    }

    /// For laws over the sum over i from 1 to k - 1 of x_i y_(k-i), two values at a time.
    template <class Law>
    const Instruction* eachSum(const Arrangement::Group& group, const Instruction* i, const Law& law) const {
        const Instruction* const end = i + (group.end - group.begin);
        for (; end - i >= 2; i += 2) {
            const TwoSums<T> sums =
                sumsOfProducts(second_ + i[0].x, fallen_ + i[0].y, second_ + i[1].x, fallen_ + i[1].y, count_);
            store(group, i[0], law(i[0], sums.a));
            store(group, i[1], law(i[1], sums.b));
        }
        if (i != end) store(group, *i, law(*i, sumOfProducts(second_ + i->x, fallen_ + i->y, count_)));
        return end;
    }

    // Terms k of first and of second operands.
    const T* a_;
    const T* b_;
    T* const now_;
    const T* const row_;
    const T* const first_;
    const T* const reciprocals_;
    const T* const numbers_;
    // Term k, term 1 and term k - 1 of arrays that begin at cell 0.
    T* const newest_;
    T* const newestFalling_;
    const T* const second_;
    const T* const fallen_;
    /// Products of a sum.
    const std::size_t count_;
    const OrderTables<T>& tables_;
    const int k_;
};

template <class T>
void runAll(const OrderTables<T>& tables, int first, int last) {
    for (int k = first; k <= last; ++k) {
        Order<T>(tables, k).run(tables.arrangement->varying, tables.arrangement->loop);
        if (k < tables.arrangement->order) advanceVariables(tables, k);
    }
}

template <class T>
void runMember(const OrderTables<T>& tables, int first, int last, const Sections& sections, Crew& crew,
               unsigned member) {
    for (int k = first; k <= last; ++k) {
        Order<T> order(tables, k);
        const auto runSection = [&](const Sections::Section& section) { order.run(section); };
        const auto advance = [&](unsigned part) {
            if (k < tables.arrangement->order) advanceVariables(tables, k, sections.shares[part]);
        };
        sections.run(crew, member, runSection, advance);
    }
}

// All that they call is compiled into them, for the processor that they name. The sums are the same to the last bit.
[[gnu::flatten, gnu::target("avx")]] void runWithAvx(const OrderTables<double>& tables, int first, int last) {
    runAll(tables, first, last);
}

[[gnu::flatten]] void runMemberPlainly(const OrderTables<double>& tables, int first, int last, const Sections& sections,
                                       Crew& crew, unsigned member) {
    runMember(tables, first, last, sections, crew, member);
}
[[gnu::flatten, gnu::target("avx")]] void runMemberWithAvx(const OrderTables<double>& tables, int first, int last,
                                                           const Sections& sections, Crew& crew, unsigned member) {
    runMember(tables, first, last, sections, crew, member);
}

bool hasAvx() {
    static const bool has = __builtin_cpu_supports("avx") != 0;
    return has;
}

}  // namespace

[[gnu::flatten]] void runOrders(const OrderTables<real>& tables, int first, int last) { runAll(tables, first, last); }

[[gnu::flatten]] void runOrdersWithoutAvx(const OrderTables<double>& tables, int first, int last) {
    runAll(tables, first, last);
}

void runOrders(const OrderTables<double>& tables, int first, int last) {
    return hasAvx() ? runWithAvx(tables, first, last) : runOrdersWithoutAvx(tables, first, last);
}

void runOrders(const OrderTables<real>& tables, int first, int last, const Sections& sections, Crew& crew) {
    crew.run([&](unsigned member) { runMember(tables, first, last, sections, crew, member); });
}

void runOrders(const OrderTables<double>& tables, int first, int last, const Sections& sections, Crew& crew) {
    crew.run([&](unsigned member) {
        const auto run = hasAvx() ? runMemberWithAvx : runMemberPlainly;
        run(tables, first, last, sections, crew, member);
    });
}

}  // namespace zirk
