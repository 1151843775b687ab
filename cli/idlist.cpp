#include "cli/idlist.h"

#include "cli/errors.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace tarvo::cli {

namespace {

std::uint64_t parseId(std::string_view text, std::string_view whole) {
    std::uint64_t id = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), id);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        throw UsageError("\"" + std::string(whole) + "\" is neither an id nor a range of ids.",
                         "The list of --ids is written as \"1,3-5\".");
    }
    return id;
}

}  // namespace

IdList::IdList(std::string_view text) {
    constexpr std::string_view separators = ", \t\r\n";
    while (true) {
        const std::size_t begin = text.find_first_not_of(separators);
        if (begin == std::string_view::npos) {
            break;
        }
        text.remove_prefix(begin);
        const std::string_view part = text.substr(0, text.find_first_of(separators));
        text.remove_prefix(part.size());
        const std::size_t hyphen = part.find('-');
        const std::uint64_t first = parseId(part.substr(0, hyphen), part);
        const std::uint64_t last =
            hyphen == std::string_view::npos ? first : parseId(part.substr(hyphen + 1), part);
        if (last < first) {
            throw UsageError("The range \"" + std::string(part) + "\" ends before it begins.");
        }
        m_ranges.push_back({first, last});
    }
    if (m_ranges.empty()) {
        throw UsageError("The list of ids is empty.");
    }
    std::sort(m_ranges.begin(), m_ranges.end(),
              [](const Range& a, const Range& b) { return a.first < b.first; });
    std::vector<Range> merged;
    for (const Range& range : m_ranges) {
        if (!merged.empty() && range.first <= merged.back().last) {
            merged.back().last = std::max(merged.back().last, range.last);
        } else {
            merged.push_back(range);
        }
    }
    m_ranges = std::move(merged);
}

void IdList::limit(std::uint64_t largest) {
    std::erase_if(m_ranges, [largest](const Range& range) { return range.first > largest; });
    if (!m_ranges.empty()) {
        m_ranges.back().last = std::min(m_ranges.back().last, largest);
    }
}

std::uint64_t IdList::count() const {
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t total = 0;
    for (const Range& range : m_ranges) {
        const std::uint64_t more = range.last - range.first;
        total = more >= most - total ? most : total + more + 1;
    }
    return total;
}

void IdList::next(std::vector<std::uint64_t>& ids, std::size_t count) {
    ids.clear();
    while (ids.size() < count && m_at < m_ranges.size()) {
        Range& range = m_ranges[m_at];
        ids.push_back(range.first);
        if (range.first == range.last) {
            ++m_at;
        } else {
            ++range.first;
        }
    }
}

}  // namespace tarvo::cli
