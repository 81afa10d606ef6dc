// SPDX-License-Identifier: MIT
// The search in both lists of names.
#include "report/layout.hpp"

namespace zirk {

bool Selection::selects(const std::string& name) const {
    const std::string key = name + ":";
    const bool included = printList.empty() || printList.find(key) != std::string::npos;
    const bool excluded = !noPrintList.empty() && noPrintList.find(key) != std::string::npos;
    return included && !excluded;
}

}  // namespace zirk
