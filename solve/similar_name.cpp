// SPDX-License-Identifier: MIT
// Distances between words.
#include "solve/similar_name.hpp"

#include <algorithm>

namespace zirk::solve {

namespace {

/// Insertions, deletions, replacements and swaps of neighbours from one word to the other.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
                continue;
            }
            const std::size_t replaced = d[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
            }
        }
    }
    return d[a.size()][b.size()];
}

}  // namespace

std::string similarName(const std::string& name, const std::vector<std::string>& names) {
    // Nobody's option is that long.
    if (name.size() > 64) return "";
    std::size_t least = std::min<std::size_t>(2, name.size() / 2) + 1;
    std::string similar;
    for (const std::string& candidate : names) {
        const std::size_t changes = distance(name, candidate);
        if (changes >= least) continue;
        least = changes;
        similar = candidate;
    }
    return similar;
}

}  // namespace zirk::solve
