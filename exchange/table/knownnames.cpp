#include "exchange/table/knownnames.h"

#include "catalogue/catalogue.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace tarvo::exchange {

namespace {

struct KnownName {
    std::string_view name;
    const char* attribute;
    std::uint32_t element;
};

constexpr KnownName knownNames[] = {
    {"x", "tarvo.xyz", 0},
    {"y", "tarvo.xyz", 1},
    {"z", "tarvo.xyz", 2},
    {"red", "tarvo.rgba", 0},
    {"green", "tarvo.rgba", 1},
    {"blue", "tarvo.rgba", 2},
    {"alpha", "tarvo.rgba", 3},
    {"r", "tarvo.rgba", 0},
    {"g", "tarvo.rgba", 1},
    {"b", "tarvo.rgba", 2},
    {"diffuse_red", "tarvo.rgba", 0},
    {"diffuse_green", "tarvo.rgba", 1},
    {"diffuse_blue", "tarvo.rgba", 2},
    {"diffuse_alpha", "tarvo.rgba", 3},
    {"nx", "tarvo.surface_normal", 0},
    {"ny", "tarvo.surface_normal", 1},
    {"nz", "tarvo.surface_normal", 2},
    {"normal_x", "tarvo.surface_normal", 0},
    {"normal_y", "tarvo.surface_normal", 1},
    {"normal_z", "tarvo.surface_normal", 2},
    {"intensity", "tarvo.intensity", 0},
    {"scalar_intensity", "tarvo.intensity", 0},
};

bool isAttributeName(std::string_view name) {
    return name.find('.') != std::string_view::npos &&
           std::all_of(name.begin(), name.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '.';
           });
}

// An element "NAME[I]" of an attribute of the catalogue.
bool isElement(std::string_view name, Column& column) {
    const std::size_t open = name.find('[');
    const auto* const entry = catalogue::findAttribute(name.substr(0, open));
    if (entry == nullptr || open == std::string_view::npos || !name.ends_with(']')) {
        return false;
    }
    const char* const end = name.data() + name.size() - 1;
    const auto read = std::from_chars(name.data() + open + 1, end, column.element);
    column.attribute = entry->name;
    column.length = entry->length;
    return read.ec == std::errc() && read.ptr == end && column.element < entry->length;
}

}  // namespace

Column columnNamed(std::string_view name, std::string_view prefix) {
    Column column;
    const std::string safe = safeName(name);
    for (const KnownName& known : knownNames) {
        if (safe == known.name) {
            column.attribute = known.attribute;
            column.element = known.element;
            column.length = catalogue::findAttribute(known.attribute)->length;
            return column;
        }
    }
    if (isAttributeName(name)) {
        column.attribute = name;
        const auto* const entry = catalogue::findAttribute(name);
        column.length = entry ? entry->length : 1;
        return column;
    }
    if (isElement(name, column)) {
        return column;
    }
    column = {};
    column.attribute = std::string(prefix) + safe;
    column.title = validUtf8(std::string(name));
    return column;
}

void makeUnique(std::vector<Column>& columns, const std::string& fileName) {
    std::set<std::string> taken;
    for (Column& column : columns) {
        if (catalogue::findAttribute(column.attribute) == nullptr) {
            column.attribute = uniqueName(column.attribute, taken);
        } else if (!taken.insert(column.descriptor()).second) {
            throw core::Failure("\"" + fileName + "\" tells \"" + column.descriptor() + "\" twice.",
                                "One of the two columns has to be renamed or taken out.");
        }
    }
}

}  // namespace tarvo::exchange
