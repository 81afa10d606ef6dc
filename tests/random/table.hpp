// SPDX-License-Identifier: MIT
// The result table read back: columns by name, cells as text.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace random_systems {

struct Table {
    /// Names of the columns with values, in their order.
    std::vector<std::string> names;
    /// Order and time of each row, as written.
    std::vector<std::string> heads;
    std::vector<std::string> times;
    std::map<std::string, std::vector<std::string>> columns;
};

/// Reads the table layout; std::runtime_error for a row that does not fit to the header.
Table readTable(const std::string& text);

}  // namespace random_systems
