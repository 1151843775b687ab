#include "exchange/table/names.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace tarvo::exchange {

std::string safeName(std::string_view text) {
    std::string name;
    for (const char c : text) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_') {
            name += c;
        } else if (c >= 'A' && c <= 'Z') {
            name += static_cast<char>(c - 'A' + 'a');
        } else {
            name += '_';
        }
    }
    return name.empty() ? "_" : name;
}

bool isAttributeName(std::string_view name) {
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    };
    return !name.empty() && isLetter(name.front()) &&
           std::all_of(name.begin(), name.end(),
                       [&](char c) { return isLetter(c) || (c >= '0' && c <= '9') || c == '.'; });
}

bool isFullName(std::string_view name) {
    return isAttributeName(name) && name.find('.') != std::string_view::npos;
}

bool splitElement(std::string& name, std::uint32_t& element) {
    const std::size_t open = name.find('[');
    if (open == std::string::npos || name.back() != ']') {
        return false;
    }
    const char* const end = name.data() + name.size() - 1;
    const auto read = std::from_chars(name.data() + open + 1, end, element);
    if (read.ec != std::errc() || read.ptr != end) {
        return false;
    }
    name.resize(open);
    return true;
}

std::string uniqueName(const std::string& name, std::set<std::string>& taken) {
    std::string candidate = name;
    for (int i = 2; !taken.insert(candidate).second; ++i) {
        candidate = name + "_" + std::to_string(i);
    }
    return candidate;
}

}  // namespace tarvo::exchange
