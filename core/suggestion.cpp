#include "core/suggestion.h"

#include "core/utf8.h"

#include <algorithm>
#include <utility>

namespace tarvo::core {

namespace {

constexpr std::size_t longestWord = 64;
constexpr std::size_t mostNames = 3;

// How many letters must be inserted, left out, replaced or swapped with their neighbours.
std::size_t distanceOf(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before;  // the row before the last one
    std::vector<std::size_t> last;
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t k = 0; k <= b.size(); ++k) {
        row[k] = k;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before = std::move(last);
        last = row;
        row[0] = i;
        for (std::size_t k = 1; k <= b.size(); ++k) {
            const std::size_t changed = last[k - 1] + (a[i - 1] == b[k - 1] ? 0 : 1);
            row[k] = std::min({last[k] + 1, row[k - 1] + 1, changed});
            if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1]) {
                row[k] = std::min(row[k], before[k - 2] + 1);
            }
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string> nearest(std::string_view word, const std::vector<std::string>& names) {
    std::vector<std::pair<std::size_t, std::string>> near;
    const std::string lower = lowerCase(word);
    const std::size_t most = 1 + word.size() / 5;
    if (word.size() > longestWord) {
        return {};
    }
    for (const std::string& name : names) {
        if (name.size() > 2 * longestWord) {
            continue;
        }
        const std::string other = lowerCase(name);
        const std::size_t distance = distanceOf(lower, other);
        // A word of one or two letters is near to anything short.
        if (distance <= most && distance < std::max<std::size_t>(word.size(), 2)) {
            near.emplace_back(distance, name);
        } else if (word.size() > 1 && other.starts_with(lower)) {
            near.emplace_back(most + 1, name);
        }
    }
    std::ranges::stable_sort(near, {}, [](const auto& one) { return one.first; });
    std::vector<std::string> result;
    for (auto& [distance, name] : near) {
        if (result.size() < mostNames && std::ranges::find(result, name) == result.end()) {
            result.push_back(std::move(name));
        }
    }
    return result;
}

std::string didYouMean(const std::vector<std::string>& names) {
    if (names.empty()) {
        return {};
    }
    std::string others;
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        others += (i == 0 ? "\"" : ", \"") + names[i] + "\"";
    }
    return others.empty() ? "Did you mean \"" + names.back() + "\"?"
                          : "Did you mean " + others + " or \"" + names.back() + "\"?";
}

std::string suggestion(std::string_view word, const std::vector<std::string>& names) {
    const std::string question = didYouMean(nearest(word, names));
    return question.empty() ? "" : question + "\n";
}

}  // namespace tarvo::core
