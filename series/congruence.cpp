// SPDX-License-Identifier: MIT
// Which slots have the same terms: refinement of a partition until it is stable.
#include "series/congruence.hpp"

#include <algorithm>
#include <map>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "text/extended_bits.hpp"

namespace zirk {

namespace {

constexpr std::uint32_t none = TermGraph::none;

/// What tells variables and numbers apart before their operands are looked at: start values and values, bit by bit.
struct Label {
    ExprType type;
    ExtendedBits bits;

    bool operator==(const Label& other) const {
        return type == other.type && bits.mantissa == other.bits.mantissa &&
               bits.signAndExponent == other.bits.signAndExponent;
    }
};

struct LabelHash {
    std::size_t operator()(const Label& label) const {
        // Mantissas of round numbers differ in their high bits only.
        const std::uint64_t mixed = (label.bits.mantissa ^ label.bits.signAndExponent) * 0x9e3779b97f4a7c15;
        return static_cast<std::size_t>((mixed >> 32) ^ mixed ^ static_cast<std::uint64_t>(label.type));
    }
};

/// Slots in classes; a class is a range of `members_`.
class Partition {
public:
    using ClassIndex = std::uint32_t;

    explicit Partition(const TermGraph& graph) : members_(graph.size()), place_(graph.size()), classOf_(graph.size()) {
        classify(graph);
        // Counts become ranges.
        std::uint32_t begin = 0;
        for (Class& each : classes_) {
            const std::uint32_t size = std::exchange(each.end, begin);
            each.begin = begin;
            begin += size;
        }
        for (SlotIndex slot = 0; slot < graph.size(); ++slot) {
            place_[slot] = classes_[classOf_[slot]].end++;
            members_[place_[slot]] = slot;
        }
    }

    ClassIndex count() const { return static_cast<ClassIndex>(classes_.size()); }
    const SlotIndex* begin(ClassIndex which) const { return members_.data() + classes_[which].begin; }
    const SlotIndex* end(ClassIndex which) const { return members_.data() + classes_[which].end; }

    /// Moves a slot to the marked part of its class; the class when it is the first one there, else none.
    ClassIndex mark(SlotIndex slot) {
        const ClassIndex which = classOf_[slot];
        Class& home = classes_[which];
        const std::uint32_t border = home.begin + home.marked;
        if (place_[slot] < border) return none;
        const SlotIndex other = members_[border];
        std::swap(members_[border], members_[place_[slot]]);
        place_[other] = place_[slot];
        place_[slot] = border;
        return home.marked++ == 0 ? which : none;
    }

    /// Splits marked from unmarked members; the smaller part becomes a new class. None when all were marked.
    ClassIndex split(ClassIndex which) {
        Class& home = classes_[which];
        const std::uint32_t border = home.begin + home.marked;
        const bool markedIsSmaller = home.marked <= home.end - border;
        home.marked = 0;
        if (border == home.end) return none;
        const Class smaller = markedIsSmaller ? Class{home.begin, border, 0} : Class{border, home.end, 0};
        (markedIsSmaller ? home.begin : home.end) = border;
        const ClassIndex added = count();
        classes_.push_back(smaller);
        for (std::uint32_t i = smaller.begin; i < smaller.end; ++i) classOf_[members_[i]] = added;
        return added;
    }

private:
    struct Class {
        std::uint32_t begin;
        std::uint32_t end;
        std::uint32_t marked;
    };

    /// Finds the class of every slot, and counts its members in `end`.
    void classify(const TermGraph& graph) {
        std::unordered_map<Label, ClassIndex, LabelHash> labels;
        std::map<ExprType, ClassIndex> operations;
        labels.reserve(graph.variables);
        for (SlotIndex slot = 0; slot < graph.size(); ++slot) {
            const ExprType type = graph[slot].type;
            ClassIndex which = count();
            if (graph.isVariable(slot) || type == ExprType::Number) {
                // Before it the start value is that of another point.
                graph[slot].node->BeginStep();
                which = labels.try_emplace({type, bitsOf(graph[slot].node->startValue())}, which).first->second;
            } else if (!graph.isLeaf(slot)) {
                which = operations.try_emplace(type, which).first->second;
            }
            // Every time node has a value of its own, and so has every algebraic variable.
            if (which == count()) classes_.push_back({0, 0, 0});
            ++classes_[which].end;
            classOf_[slot] = which;
        }
    }

    std::vector<SlotIndex> members_;
    std::vector<std::uint32_t> place_;
    std::vector<ClassIndex> classOf_;
    std::vector<Class> classes_;
};

/// The slots that have a given slot as their left (or right) operand, for all slots in one list.
struct Users {
    Users(const TermGraph& graph, SlotIndex TermGraph::Slot::*operand) : begin(graph.size() + std::size_t{1}) {
        for (const TermGraph::Slot& slot : graph.slots) {
            if (slot.*operand != none) ++begin[slot.*operand + std::size_t{1}];
        }
        std::partial_sum(begin.begin(), begin.end(), begin.begin());
        list.resize(begin.back());
        std::vector<std::uint32_t> next(begin.begin(), begin.end() - 1);
        for (SlotIndex slot = 0; slot < graph.size(); ++slot) {
            if (graph[slot].*operand != none) list[next[graph[slot].*operand]++] = slot;
        }
    }

    std::vector<std::uint32_t> begin;
    std::vector<SlotIndex> list;
};

}  // namespace

std::vector<SlotIndex> firstCongruent(const TermGraph& graph) {
    Partition partition(graph);
    const Users users[] = {Users(graph, &TermGraph::Slot::left), Users(graph, &TermGraph::Slot::right)};
    std::vector<Partition::ClassIndex> waiting(partition.count());
    std::iota(waiting.begin(), waiting.end(), 0);
    std::vector<SlotIndex> splitter;
    std::vector<Partition::ClassIndex> touched;
    // A class that still waits and is split needs both parts; one that is done needs only one of them, the smaller.
    // The new part is always the smaller one, and the other keeps its number and so its place in the list.
    while (!waiting.empty()) {
        const Partition::ClassIndex which = waiting.back();
        waiting.pop_back();
        splitter.assign(partition.begin(which), partition.end(which));
        for (const Users& side : users) {
            for (const SlotIndex slot : splitter) {
                for (std::uint32_t i = side.begin[slot]; i < side.begin[slot + std::size_t{1}]; ++i) {
                    const Partition::ClassIndex home = partition.mark(side.list[i]);
                    if (home != none) touched.push_back(home);
                }
            }
            for (const Partition::ClassIndex home : touched) {
                const Partition::ClassIndex added = partition.split(home);
                if (added != none) waiting.push_back(added);
            }
            touched.clear();
        }
    }
    std::vector<SlotIndex> first(graph.size());
    for (Partition::ClassIndex which = 0; which < partition.count(); ++which) {
        const SlotIndex lowest = *std::min_element(partition.begin(which), partition.end(which));
        for (const SlotIndex* slot = partition.begin(which); slot != partition.end(which); ++slot)
            first[*slot] = lowest;
    }
    return first;
}

DistinctTerms::DistinctTerms(const TermGraph& whole) : representative(firstCongruent(whole)) {
    // Rising slots: a first slot has its number before those that it stands for ask for it.
    for (SlotIndex slot = 0; slot < whole.size(); ++slot) {
        const bool isFirst = representative[slot] == slot;
        representative[slot] = isFirst ? graph.size() : representative[representative[slot]];
        if (!isFirst) continue;
        graph.slots.push_back(whole[slot]);
        if (whole.isVariable(slot)) ++graph.variables;
    }
    const auto represent = [this](SlotIndex& operand) {
        if (operand != none) operand = representative[operand];
    };
    for (TermGraph::Slot& slot : graph.slots) {
        represent(slot.left);
        represent(slot.right);
    }
}

}  // namespace zirk
