// SPDX-License-Identifier: MIT
// Which slots have the same terms: refinement of a partition until it is stable.
#include <algorithm>
#include <numeric>
#include <tuple>

#include "series/term_graph.hpp"
#include "text/extended_bits.hpp"

namespace zirk {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// What tells slots apart before their operands are looked at.
struct Label {
    TermGraph::Kind kind;
    std::uint16_t signAndExponent;
    std::uint64_t mantissa;

    bool operator<(const Label& other) const {
        return std::tie(kind, signAndExponent, mantissa) < std::tie(other.kind, other.signAndExponent, other.mantissa);
    }
};

Label labelOf(const TermGraph& graph, int slot) {
    const TermGraph::Kind kind = graph[slot].kind;
    if (kind == TermGraph::Kind::Variable || kind == TermGraph::Kind::Number) {
        const ExtendedBits bits = bitsOf(graph[slot].node->startValue());
        return {kind, bits.signAndExponent, bits.mantissa};
    }
    // Every time node has a value of its own, and so has every algebraic variable.
    return {kind, 0, graph.isLeaf(slot) ? static_cast<std::uint64_t>(slot) : 0};
}

/// Slots in classes; a class is a range of `members_`.
class Partition {
public:
    explicit Partition(const TermGraph& graph) : members_(at(graph.size())), place_(members_.size()), of_(place_) {
        std::vector<Label> labels;
        labels.reserve(members_.size());
        for (int slot = 0; slot < graph.size(); ++slot) labels.push_back(labelOf(graph, slot));
        std::iota(members_.begin(), members_.end(), 0);
        std::sort(members_.begin(), members_.end(), [&](int a, int b) { return labels[at(a)] < labels[at(b)]; });
        for (int i = 0; i < graph.size(); ++i) {
            const int slot = members_[at(i)];
            if (i == 0 || labels[at(members_[at(i - 1)])] < labels[at(slot)]) classes_.push_back({i, i, 0});
            ++classes_.back().end;
            place_[at(slot)] = i;
            of_[at(slot)] = static_cast<int>(classes_.size()) - 1;
        }
    }

    int count() const { return static_cast<int>(classes_.size()); }
    const int* begin(int which) const { return members_.data() + classes_[at(which)].begin; }
    const int* end(int which) const { return members_.data() + classes_[at(which)].end; }

    /// Moves a slot to the marked part of its class; true for the first one of the class.
    bool mark(int slot, int& which) {
        which = of_[at(slot)];
        Class& home = classes_[at(which)];
        const int border = home.begin + home.marked;
        if (place_[at(slot)] < border) return false;
        const int other = members_[at(border)];
        std::swap(members_[at(border)], members_[at(place_[at(slot)])]);
        place_[at(other)] = place_[at(slot)];
        place_[at(slot)] = border;
        return home.marked++ == 0;
    }

    /// Splits marked from unmarked members; the smaller part becomes a new class. -1 when all were marked.
    int split(int which) {
        Class& home = classes_[at(which)];
        const int border = home.begin + home.marked;
        const bool markedIsSmaller = home.marked <= home.end - border;
        home.marked = 0;
        if (border == home.end) return -1;
        const Class smaller = markedIsSmaller ? Class{home.begin, border, 0} : Class{border, home.end, 0};
        (markedIsSmaller ? home.begin : home.end) = border;
        const int added = count();
        classes_.push_back(smaller);
        for (int i = smaller.begin; i < smaller.end; ++i) of_[at(members_[at(i)])] = added;
        return added;
    }

private:
    struct Class {
        int begin;
        int end;
        int marked;
    };

    std::vector<int> members_;
    std::vector<int> place_;
    std::vector<int> of_;
    std::vector<Class> classes_;
};

/// The slots that have a given slot as their left (or right) operand, for all slots in one list.
struct Users {
    Users(const TermGraph& graph, bool left) : begin(at(graph.size()) + 1, 0) {
        const auto operandOf = [&](int slot) { return left ? graph[slot].left : graph[slot].right; };
        for (int slot = 0; slot < graph.size(); ++slot) {
            if (operandOf(slot) != TermGraph::none) ++begin[at(operandOf(slot)) + 1];
        }
        std::partial_sum(begin.begin(), begin.end(), begin.begin());
        list.resize(at(begin.back()));
        std::vector<int> next(begin.begin(), begin.end() - 1);
        for (int slot = 0; slot < graph.size(); ++slot) {
            if (operandOf(slot) != TermGraph::none) list[at(next[at(operandOf(slot))]++)] = slot;
        }
    }

    std::vector<int> begin;
    std::vector<int> list;
};

}  // namespace

std::vector<int> congruentSlots(const TermGraph& graph) {
    Partition partition(graph);
    const Users users[] = {Users(graph, true), Users(graph, false)};
    std::vector<int> waiting(at(partition.count()));
    std::iota(waiting.begin(), waiting.end(), 0);
    std::vector<int> splitter;
    std::vector<int> touched;
    // A class that still waits and is split needs both parts; one that is done needs only one of them, the smaller.
    // The new part is always the smaller one, and the other keeps its number and so its place in the list.
    while (!waiting.empty()) {
        const int which = waiting.back();
        waiting.pop_back();
        splitter.assign(partition.begin(which), partition.end(which));
        for (const Users& side : users) {
            for (const int slot : splitter) {
                for (int i = side.begin[at(slot)]; i < side.begin[at(slot) + 1]; ++i) {
                    int home = 0;
                    if (partition.mark(side.list[at(i)], home)) touched.push_back(home);
                }
            }
            for (const int home : touched) {
                const int added = partition.split(home);
                if (added >= 0) waiting.push_back(added);
            }
            touched.clear();
        }
    }
    std::vector<int> first(at(graph.size()));
    for (int which = 0; which < partition.count(); ++which) {
        const int lowest = *std::min_element(partition.begin(which), partition.end(which));
        for (const int* slot = partition.begin(which); slot != partition.end(which); ++slot) first[at(*slot)] = lowest;
    }
    return first;
}

}  // namespace zirk
