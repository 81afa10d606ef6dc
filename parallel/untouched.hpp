// SPDX-License-Identifier: MIT
// Memory that nobody has written to yet.
#pragma once

#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace zirk {

/// Leaves new numbers as they come. On machines with several memories a page lies where the processor is that writes to
/// it first: that has to be the one that will work with it.
template <class T>
struct UntouchedAllocator : std::allocator<T> {
    template <class Other>
    struct rebind {
        using other = UntouchedAllocator<Other>;
    };

    template <class Other>
    void construct(Other* place) noexcept {
        ::new (static_cast<void*>(place)) Other;
    }
    template <class Other, class... Arguments>
    void construct(Other* place, Arguments&&... arguments) {
        ::new (static_cast<void*>(place)) Other(std::forward<Arguments>(arguments)...);
    }
};

/// Of numbers that have to be set before they are read.
template <class T>
using UntouchedVector = std::vector<T, UntouchedAllocator<T>>;

}  // namespace zirk
