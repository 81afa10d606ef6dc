// SPDX-License-Identifier: MIT
// Depth-first walks with a stack of their own, so that depth costs memory and not machine stack.
#pragma once

#include <vector>

namespace zirk {

/// Runs one task and all it depends on, dependencies first.
///
/// A Task is a small value with `bool enter()` (false: nothing to do), `bool next(Task&)` (the next dependency, in
/// order) and `void leave()` (all dependencies are done).
template <class Task>
void walk(Task root) {
    if (!root.enter()) return;
    std::vector<Task> stack{root};
    while (!stack.empty()) {
        Task dependency;
        if (!stack.back().next(dependency)) {
            stack.back().leave();
            stack.pop_back();
        } else if (dependency.enter()) {
            stack.push_back(dependency);
        }
    }
}

/// Counts how deep plain recursion stands; past the limit a walk takes over.
class Nesting {
public:
    Nesting() { ++depth_; }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

    static bool tooDeep() { return depth_ >= 500; }

private:
    static inline thread_local int depth_ = 0;
};

}  // namespace zirk
