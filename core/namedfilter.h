// Filters in which values stand by the names that their attribute gives them.
//
// In a comparison one of whose sides is an attribute with named values, or an element of it, and
// nothing else, the other side may be one of the names: as a word, tarvo.class == ground, or
// between " or ', tarvo.class == "high vegetation". A name that differs in the case of its letters
// only is taken, too. A word that is the name of an attribute stands for that. Libraries know
// numbers only.
#pragma once

#include "qrb/error.h"
#include "qrb/pointcloud.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

// The attributes that filters are about.
struct FilterAttributes {
    // Refers to what it is made of.
    static FilterAttributes of(const qrb::pointcloud::PointAttributes& attributes);
    static FilterAttributes of(const std::vector<qrb::pointcloud::PointAttribute>& attributes);

    std::function<std::optional<qrb::pointcloud::PointAttribute>(const std::string& name)> find;
    std::function<std::vector<std::string>()> names;
};

class NamedFilter {
public:
    // Throws qrb::Error, as the library does for filters, for a word that is neither an attribute
    // nor a name, for a name of several numbers and for one that lacks a quotation mark. What is no
    // such comparison stays as it is.
    NamedFilter(std::string typed, const FilterAttributes& attributes);

    // With numbers in place of the names.
    const std::string& numbers() const { return m_numbers; }
    // What a library says of numbers(), told of what was typed: positions and the excerpt.
    qrb::ErrorImpl ofTyped(const qrb::Error& error) const;

private:
    struct Replacement {
        std::size_t begin = 0;  // of what was typed
        std::size_t end = 0;
        std::string number;
    };

    std::size_t typedOffset(std::size_t offset) const;

    std::string m_typed;
    std::string m_numbers;
    std::vector<Replacement> m_replacements;
};

// The filter with numbers in place of names, for whoever keeps it or hands it on. Throws
// qrb::Error.
std::string withNumbers(const std::string& filter, const FilterAttributes& attributes);

// From now on all filters that the database is given may have names.
void takeNamesInFilters(qrb::Pointcloud& database);

}  // namespace tarvo::core
