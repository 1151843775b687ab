// Reads points page by page into texts for display. Owns the query and its buffers; needs the
// database only while it is made, because queries keep it alive.
#pragma once

#include "qrb/pointcloud.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <optional>
#include <vector>

class PointReader {
public:
    static constexpr std::uint32_t pageSize = 100;
    // Of longer attributes only the first elements are shown.
    static constexpr std::uint32_t maximumElements = 10;

    // What to select: a filter expression (empty: all points) and the nodes to read (none given:
    // all nodes).
    struct Selection {
        std::string filter;
        std::optional<std::vector<std::uint32_t>> nodes;

        tarvo::qrb::pointcloud::QuerySelect query(const tarvo::qrb::Pointcloud& database) const;
    };

    // Binds every element of every attribute. Throws tarvo::qrb::Error, as next() does.
    PointReader(const tarvo::qrb::Pointcloud& database, const Selection& selection);
    PointReader(const PointReader&) = delete;
    PointReader& operator=(const PointReader&) = delete;

    // The element names, in the order of the database's attributes.
    const QStringList& columns() const { return m_columns; }
    // Reads the next page and returns its number of points; 0: none left.
    std::uint32_t next();
    // A value of the page read last; row < next(), column is an index of columns().
    QString text(std::uint32_t row, int column) const;
    // Per cent of the work done.
    std::uint32_t progress() const { return m_query.progress(); }

private:
    struct Binding {
        tarvo::qrb::pointcloud::DataType type;
        std::uint32_t length;  // shown elements
        int decimals;
        std::vector<std::uint64_t> buffer;  // pageSize times length values of 8 bytes
    };
    struct Cell {
        std::size_t binding;
        std::uint32_t element;
    };

    void bind(const tarvo::qrb::pointcloud::PointAttribute& attribute);

    tarvo::qrb::pointcloud::QuerySelect m_query;
    std::vector<Binding> m_bindings;
    std::vector<Cell> m_cells;  // by column
    QStringList m_columns;
};

// The type in which the values of an attribute are read for display; all have 8 bytes.
tarvo::qrb::pointcloud::DataType displayType(
    const tarvo::qrb::pointcloud::PointAttribute& attribute);

// The names of the elements shown: the name alone for length 1, else "NAME[I]" for at most the
// given number of elements.
QStringList elementNames(const QString& name, std::uint32_t length,
                         std::uint32_t maximum = PointReader::maximumElements);

// A value of 8 bytes as text; empty for types that displayType() never gives.
QString valueText(const void* value, tarvo::qrb::pointcloud::DataType type, int decimals);
