#include "exchange/table/knownnames.h"

#include "catalogue/catalogue.h"
#include "exchange/table/names.h"

#include <charconv>
#include <map>
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
    column.attribute = name;
    if (splitElement(column.attribute, column.element) && column.element >= mostElements) {
        column.attribute = name;  // no element of anything
    }
    if (isFullName(column.attribute)) {
        const auto* const entry = catalogue::findAttribute(column.attribute);
        column.length = std::max(entry ? entry->length : 1, column.element + 1);
        return column;
    }
    column = {};
    column.attribute = std::string(prefix) + safe;
    column.title = validUtf8(std::string(name));
    return column;
}

void setLengths(std::vector<Column>& columns) {
    std::map<std::string, std::uint32_t> lengths;
    for (const Column& column : columns) {
        const auto* const known = catalogue::findAttribute(column.attribute);
        std::uint32_t& length = lengths[column.attribute];
        length = std::max({length, column.element + 1, known ? known->length : 1});
    }
    for (Column& column : columns) {
        column.length = lengths[column.attribute];
    }
}

void makeUnique(std::vector<Column>& columns, const std::string& fileName) {
    constexpr std::size_t longestName = 255;
    setLengths(columns);
    std::set<std::string> taken;
    for (Column& column : columns) {
        if (column.attribute.size() > longestName) {
            throw core::Failure("A column of \"" + fileName + "\" has a name of " +
                                std::to_string(column.attribute.size()) + " characters: \"" +
                                column.attribute.substr(0, 40) + "...\".");
        }
        if (column.length == 1 && catalogue::findAttribute(column.attribute) == nullptr) {
            column.attribute = uniqueName(column.attribute, taken);
        } else if (!taken.insert(column.descriptor()).second) {
            throw core::Failure("\"" + fileName + "\" tells \"" + column.descriptor() + "\" twice.",
                                "One of the two columns has to be renamed or taken out.");
        }
    }
}

}  // namespace tarvo::exchange
