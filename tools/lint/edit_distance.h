// Edit distance between two names, for "did you mean" suggestions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace camtune {

// Insertions, deletions and substitutions that turn `a` into `b`.
inline size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<size_t> row(b.size() + 1);
    for (size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (size_t i = 1; i <= a.size(); ++i) {
        size_t diagonal = row[0];
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t up = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])});
            diagonal = up;
        }
    }
    return row[b.size()];
}

}  // namespace camtune
