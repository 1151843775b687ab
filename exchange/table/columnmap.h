// Which attributes the columns of files go to where a user wants others than the usual ones.
#pragma once

#include "exchange/table/pointsource.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange {

struct ColumnChoice {
    // The name of the column in its file, in its case, or what it goes to by itself: "Intensity",
    // "column 4", "text.column_4".
    std::string column;
    // "NAME" or "NAME[I]", or one of the usual names ("x", "intensity"); empty: the column is left
    // out.
    std::string attribute;
};
using ColumnMap = std::vector<ColumnChoice>;

// "COLUMN=ATTRIBUTE", with "-" for a column that is left out. Throws Failure.
ColumnChoice choiceFromText(const std::string& text);
std::string choiceText(const ColumnChoice& choice);

// Whether the name can be that of an attribute or of its element; empty: it can, else why not, in a
// sentence.
std::string faultOfTarget(const std::string& attribute);

// The attribute that one of the usual names stands for; other names are what they are.
std::string fullTarget(const std::string& attribute);

// The columns of another source as a map has them; those that it doesn't name stay.
class MappedSource : public PointSource {
public:
    // Choices of columns that the source doesn't have are passed over. Throws Failure for a name
    // that is none of an attribute, for a column whose name stands several times or that
    // two choices name, and where two columns would go to one element, or none is left.
    MappedSource(std::shared_ptr<PointSource> inner, const ColumnMap& map);

    const std::string& fileName() const override { return m_inner->fileName(); }
    const std::vector<Column>& columns() const override { return m_columns; }
    // Which columns of the other source these are.
    const std::vector<std::size_t>& innerColumns() const { return m_innerColumns; }
    double progress() const override { return m_inner->progress(); }
    void rewind() override { m_inner->rewind(); }
    std::uint32_t largestBatch() const override { return m_inner->largestBatch(); }
    std::uint32_t next() override { return m_inner->next(); }
    const void* values(std::size_t column) const override {
        return m_inner->values(m_innerColumns[column]);
    }
    std::vector<Affine> coordinateAxes() const override;
    Origin origin() const override { return m_inner->origin(); }
    std::vector<std::pair<std::string, std::string>> metaData() const override {
        return m_inner->metaData();
    }
    std::vector<std::string> notes() const override { return m_inner->notes(); }

private:
    void settle();

    std::shared_ptr<PointSource> m_inner;
    std::vector<Column> m_columns;
    std::vector<std::size_t> m_innerColumns;
};

// Each source behind the map. Throws Failure, also for a choice whose column no source has.
std::vector<std::unique_ptr<PointSource>> mapped(
    const std::vector<std::shared_ptr<PointSource>>& sources, const ColumnMap& map);

}  // namespace tarvo::exchange
