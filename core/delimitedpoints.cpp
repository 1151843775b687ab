#include "core/delimitedpoints.h"

#include "numbers/digits.h"
#include "numbers/numbertext.h"
#include "qrb/error.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <deque>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>

namespace tarvo::core {

namespace {

using qrb::pointcloud::DataType;

// Points that are read, and made a text of, at a time: no more values than that together.
constexpr std::uint32_t mostLines = 8192;
constexpr std::size_t mostCells = 1 << 20;

template <typename T>
char* writeCell(char* at, const std::byte* values, std::size_t row, const ValueFormat& format) {
    T value;
    std::memcpy(&value, values + row * sizeof(T), sizeof(T));
    if constexpr (std::is_same_v<T, double>)
        return format.writeDouble(at, value);
    else
        return numbers::writeWhole(at, value);
}

// Writes the value of a row.
using CellWriter = char* (*)(char* at, const std::byte* values, std::size_t row,
                             const ValueFormat& format);

CellWriter cellWriter(DataType type) {
    switch (type) {
        case DataType::UINT8:
            return writeCell<std::uint8_t>;
        case DataType::UINT16:
            return writeCell<std::uint16_t>;
        case DataType::UINT32:
            return writeCell<std::uint32_t>;
        case DataType::UINT64:
            return writeCell<std::uint64_t>;
        case DataType::INT8:
            return writeCell<std::int8_t>;
        case DataType::INT16:
            return writeCell<std::int16_t>;
        case DataType::INT32:
            return writeCell<std::int32_t>;
        case DataType::INT64:
            return writeCell<std::int64_t>;
        default:
            return writeCell<double>;
    }
}

}  // namespace

// What a DelimitedWriter is made of.
namespace delimited {

// How the columns of a batch stand in memory, one behind the other, and what lines become of them.
class LineFormat {
public:
    LineFormat(const std::vector<PointColumn>& columns, char separator) : m_separator(separator) {
        m_rows = static_cast<std::uint32_t>(std::clamp<std::size_t>(
            mostCells / std::max<std::size_t>(columns.size(), 1), 1, mostLines));
        for (const PointColumn& column : columns) {
            const DataType type = column.format.narrowType();
            m_columns.push_back({&column, type, cellWriter(type), m_bytes});
            // Each begins on a boundary that suits every type.
            m_bytes += (m_rows * dataTypeSize(type) + 7) / 8 * 8;
        }
    }

    std::uint32_t rows() const { return m_rows; }
    // Of the values of a batch.
    std::size_t bytes() const { return m_bytes; }

    void bind(qrb::pointcloud::QuerySelect& query, std::byte* values) const {
        for (const Column& column : m_columns)
            query.bind(column.column->name, column.type, values + column.begin,
                       static_cast<std::int32_t>(dataTypeSize(column.type)));
    }
    // Where the values of the columns stand from there on.
    std::vector<const void*> columns(const std::byte* values) const {
        std::vector<const void*> begins;
        for (const Column& column : m_columns)
            begins.push_back(values + column.begin);
        return begins;
    }
    void copy(std::span<const void* const> from, std::byte* to, std::uint32_t rows) const {
        for (std::size_t i = 0; i < m_columns.size(); ++i)
            std::memcpy(to + m_columns[i].begin, from[i], rows * dataTypeSize(m_columns[i].type));
    }
    // Returns the end of the text, which begins at the buffer's begin and may make it larger.
    std::size_t write(std::vector<char>& text, const std::byte* values, std::uint32_t rows) const {
        const std::size_t room = m_columns.size() * (numbers::mostCharacters + 1) + 1;
        std::size_t end = 0;
        for (std::uint32_t row = 0; row < rows; ++row) {
            if (text.size() - end < room)
                text.resize(std::max(text.size() * 2, room * 16));
            end = static_cast<std::size_t>(writeLine(text.data() + end, values, row) - text.data());
        }
        return end;
    }

private:
    struct Column {
        const PointColumn* column;
        DataType type;
        CellWriter writer;
        std::size_t begin;  // of its values
    };

    char* writeLine(char* at, const std::byte* values, std::uint32_t row) const {
        for (const Column& column : m_columns) {
            at = column.writer(at, values + column.begin, row, column.column->format);
            *at++ = m_separator;
        }
        if (!m_columns.empty())
            --at;
        *at = '\n';
        return at + 1;
    }

    char m_separator;
    std::uint32_t m_rows = 0;
    std::size_t m_bytes = 0;
    std::vector<Column> m_columns;
};

// The texts of batches, made a few ahead of the one that is handed out.
class TextQueue {
public:
    explicit TextQueue(const LineFormat& format) : m_format(format) {}

    bool isFull() const { return m_batches.size() >= m_most; }
    bool isEmpty() const { return m_batches.empty(); }
    // values: of rows points, per column; a copy is taken.
    void add(std::span<const void* const> values, std::uint32_t rows) {
        Batch batch = m_spare ? std::move(*m_spare) : Batch{};
        m_spare.reset();
        if (!batch.buffers)
            batch.buffers = std::make_unique<Buffers>();
        batch.buffers->values.resize(m_format.bytes());
        m_format.copy(values, batch.buffers->values.data(), rows);
        // A batch that is not full is the last one, or nearly; without a thread to be had the one
        // who takes the text makes it.
        const auto how = rows < m_format.rows() ? std::launch::deferred
                                                : std::launch::async | std::launch::deferred;
        batch.length = std::async(how, [this, rows, &buffers = *batch.buffers] {
            return m_format.write(buffers.text, buffers.values.data(), rows);
        });
        m_batches.push_back(std::move(batch));
    }
    // Hands the oldest text out.
    void take(const TextSink& sink) {
        Batch batch = std::move(m_batches.front());
        m_batches.pop_front();
        const std::size_t length = batch.length.get();
        sink({batch.buffers->text.data(), length});
        m_spare = std::move(batch);
    }

private:
    struct Buffers {
        std::vector<std::byte> values;
        std::vector<char> text;
    };
    struct Batch {
        std::unique_ptr<Buffers> buffers;
        std::future<std::size_t> length;  // last: ends before what it uses
    };

    const LineFormat& m_format;
    const std::size_t m_most = std::max(1u, std::thread::hardware_concurrency()) + 1;
    std::optional<Batch> m_spare;
    std::deque<Batch> m_batches;
};

}  // namespace delimited

namespace {

std::string headerOf(const std::vector<PointColumn>& columns, char separator) {
    std::string text;
    for (const PointColumn& column : columns) {
        if (&column != &columns.front())
            text += separator;
        text += column.name;
    }
    return text + '\n';
}

}  // namespace

struct DelimitedWriter::Private {
    Private(const std::vector<PointColumn>& all, char separator, TextSink sink)
        : text(std::move(sink)), columns(all), format(columns, separator), queue(format) {}

    TextSink text;
    std::vector<PointColumn> columns;  // which the format refers to
    delimited::LineFormat format;
    delimited::TextQueue queue;
};

DelimitedWriter::DelimitedWriter(const std::vector<PointColumn>& columns, const DelimitedForm& form,
                                 TextSink text)
    : d(std::make_unique<Private>(columns, form.separator, std::move(text))) {
    if (form.hasHeader)
        d->text(headerOf(columns, form.separator));
}

DelimitedWriter::~DelimitedWriter() = default;

std::uint32_t DelimitedWriter::rows() const {
    return d->format.rows();
}

void DelimitedWriter::add(std::span<const void* const> values, std::uint32_t rows) {
    d->queue.add(values, rows);
    if (d->queue.isFull())
        d->queue.take(d->text);
}

void DelimitedWriter::finish() {
    while (!d->queue.isEmpty())
        d->queue.take(d->text);
}

std::uint64_t writeDelimited(const qrb::Pointcloud& database, const PointSelection& selection,
                             const std::vector<PointColumn>& columns, const DelimitedForm& form,
                             const TextSink& text, const PercentSink& percent) {
    const delimited::LineFormat format(columns, form.separator);
    qrb::pointcloud::QuerySelect query = selection.query(database);
    std::vector<std::byte> values(format.bytes());
    format.bind(query, values.data());
    const std::vector<const void*> begins = format.columns(values.data());
    DelimitedWriter writer(columns, form, text);
    std::uint64_t points = 0;
    try {
        while (points < form.limit) {
            const std::uint32_t count = query.next(static_cast<std::uint32_t>(
                std::min<std::uint64_t>(format.rows(), form.limit - points)));
            if (count == 0)
                break;
            writer.add(begins, count);
            points += count;
            if (percent)
                percent(static_cast<int>(query.progress()));
        }
    } catch (const qrb::Error&) {
        writer.finish();
        throw;
    }
    writer.finish();
    return points;
}

}  // namespace tarvo::core
