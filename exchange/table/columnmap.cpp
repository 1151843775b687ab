#include "exchange/table/columnmap.h"

#include "catalogue/catalogue.h"
#include "exchange/table/columntarget.h"
#include "exchange/table/knownnames.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <map>
#include <optional>

namespace tarvo::exchange {

namespace {

constexpr const char* coordinates = "tarvo.xyz";
constexpr const char* leftOutWord = "-";

std::string quotedName(const std::string& text) {
    return "\"" + text + "\"";
}

// The place of the column that is meant; nothing: the source doesn't have it.
std::optional<std::size_t> columnMeantBy(const std::string& name, const PointSource& source) {
    const std::vector<Column>& columns = source.columns();
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].descriptor() == name) {
            return i;  // there is one of it
        }
        if (columns[i].name == name) {
            if (found) {
                throw core::Failure(quotedName(source.fileName()) + " has several columns " +
                                        quotedName(name) + ".",
                                    "Name the attribute that the column goes to by itself: " +
                                        quotedName(columns[*found].descriptor()) + " or " +
                                        quotedName(columns[i].descriptor()) + ".");
            }
            found = i;
        }
    }
    return found;
}

void setTarget(Column& column, const std::string& target) {
    if (const std::string fault = faultOfTarget(target); !fault.empty()) {
        throw core::Failure(fault,
                            "A name such as \"own.value\", or an element of an attribute "
                            "such as \"tarvo.xyz[0]\", is needed.");
    }
    const Column usual = columnNamed(target, "");
    std::string attribute = usual.attribute;
    std::uint32_t element = usual.element;
    if (!usual.title.empty()) {  // a name that is not one of the usual form
        attribute = target;
        splitElement(attribute, element);
    }
    column.isMapped = true;
    if (column.attribute == attribute && column.element == element) {
        return;
    }
    if (column.title.empty()) {
        column.title = column.name;
    }
    column.attribute = attribute;
    column.element = element;
    column.length = element + 1;
    const bool isWhole = column.type != DataType::DOUBLE && column.type != DataType::SINGLE;
    if (attribute == "tarvo.id" && !isWhole && !column.fault) {
        column.fault =
            core::Failure("The column " + quotedName(column.name) + " holds no ids of points.",
                          "Ids are whole numbers from 0 to 18446744073709551615.");
    }
}

}  // namespace

ColumnChoice choiceFromText(const std::string& text) {
    // Names of attributes have no such character, those of columns may.
    const std::size_t sign = text.rfind('=');
    if (sign == std::string::npos || sign == 0 || sign + 1 == text.size()) {
        throw core::Failure(
            quotedName(text) + " does not tell a column and its attribute.",
            "COLUMN=ATTRIBUTE is needed, for example \"column 4=tarvo.intensity\".");
    }
    const std::string attribute = text.substr(sign + 1);
    return {text.substr(0, sign), attribute == leftOutWord ? "" : attribute};
}

std::string choiceText(const ColumnChoice& choice) {
    return choice.column + "=" + (choice.attribute.empty() ? leftOutWord : choice.attribute);
}

std::string faultOfTarget(const std::string& attribute) {
    constexpr std::size_t longestName = 255;
    std::string name = attribute;
    std::uint32_t element = 0;
    if (splitElement(name, element) && element >= mostElements) {
        return quotedName(attribute) + " has an element number above " +
               std::to_string(mostElements - 1) + ".";
    }
    const auto isLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    };
    if (name.empty() || !isLetter(name[0]) || !std::ranges::all_of(name, [&](char c) {
            return isLetter(c) || (c >= '0' && c <= '9') || c == '.';
        })) {
        return quotedName(validUtf8(attribute)) + " is no name of an attribute.";
    }
    return name.size() > longestName ? "A name has at most 255 characters." : "";
}

std::string fullTarget(const std::string& attribute) {
    const Column usual = columnNamed(attribute, "");
    return usual.title.empty() ? usual.descriptor() : attribute;
}

MappedSource::MappedSource(std::shared_ptr<PointSource> inner, const ColumnMap& map)
    : m_inner(std::move(inner)) {
    std::map<std::size_t, const ColumnChoice*> choices;
    for (const ColumnChoice& choice : map) {
        if (const auto column = columnMeantBy(choice.column, *m_inner)) {
            const auto [other, isNew] = choices.try_emplace(*column, &choice);
            if (!isNew) {
                throw core::Failure("The column " + quotedName(m_inner->columns()[*column].name) +
                                        " of " + quotedName(fileName()) + " is mapped twice: " +
                                        quotedName(choiceText(*other->second)) + " and " +
                                        quotedName(choiceText(choice)) + ".",
                                    "A column goes to one attribute.");
            }
        }
    }
    const std::vector<Column>& columns = m_inner->columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto choice = choices.find(i);
        if (choice != choices.end() && choice->second->attribute.empty()) {
            continue;
        }
        m_columns.push_back(columns[i]);
        m_innerColumns.push_back(i);
        if (choice != choices.end()) {
            setTarget(m_columns.back(), choice->second->attribute);
        }
    }
    if (m_columns.empty()) {
        throw core::Failure("All columns of " + quotedName(fileName()) + " are left out.");
    }
    settle();
}

void MappedSource::settle() {
    std::map<std::string, std::uint32_t> lengths;
    std::map<std::pair<std::string, std::uint32_t>, const Column*> taken;
    for (const Column& column : m_columns) {
        std::uint32_t& length = lengths[column.attribute];
        const auto* const known = catalogue::findAttribute(column.attribute);
        length = std::max({length, column.length, known ? known->length : 1});
        const auto [other, isNew] =
            taken.try_emplace(std::pair(column.attribute, column.element), &column);
        if (!isNew) {
            const std::string place = elementDescriptor(column.attribute, length, column.element);
            throw core::Failure("The columns " + quotedName(other->second->name) + " and " +
                                    quotedName(column.name) + " of " + quotedName(fileName()) +
                                    " would both go to " + quotedName(place) + ".",
                                "Leave one of them out, or give it another attribute.");
        }
    }
    for (Column& column : m_columns) {
        column.length = lengths[column.attribute];
    }
}

std::vector<Affine> MappedSource::coordinateAxes() const {
    const std::vector<Affine> inner = m_inner->coordinateAxes();
    std::vector<Affine> axes;
    for (std::uint32_t element = 0; element < inner.size(); ++element) {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const Column& before = m_inner->columns()[m_innerColumns[i]];
            if (m_columns[i].attribute == coordinates && m_columns[i].element == element &&
                before.attribute == coordinates && before.element < inner.size()) {
                axes.push_back(inner[before.element]);
            }
        }
    }
    return axes.size() == inner.size() ? axes : std::vector<Affine>();
}

std::vector<std::unique_ptr<PointSource>> mapped(
    const std::vector<std::shared_ptr<PointSource>>& sources, const ColumnMap& map) {
    std::vector<std::unique_ptr<PointSource>> result;
    for (const ColumnChoice& choice : map) {
        if (std::ranges::none_of(sources, [&](const auto& source) {
                return columnMeantBy(choice.column, *source).has_value();
            })) {
            std::string names;
            for (const Column& column : sources.front()->columns()) {
                names += (names.empty() ? "" : ", ") + quotedName(column.name);
            }
            throw core::Failure("No file has the column " + quotedName(choice.column) + ".",
                                "The columns of " + quotedName(sources.front()->fileName()) +
                                    " are " + names + ".");
        }
    }
    for (const auto& source : sources) {
        result.push_back(std::make_unique<MappedSource>(source, map));
    }
    return result;
}

}  // namespace tarvo::exchange
