#include "exchange/import/importsteps.h"

#include "exchange/advice.h"
#include "exchange/import/agreement.h"
#include "exchange/table/filledcolumn.h"
#include "exchange/table/threads.h"
#include "qrb/error.h"

#include <atomic>
#include <map>
#include <memory>
#include <set>

namespace tarvo::exchange {

namespace {

std::uint64_t insertBatches(qrb::pointcloud::QueryInsert& query, PointSource& source,
                            std::vector<std::unique_ptr<FilledColumn>>& filled,
                            const ImportProgress& progress) {
    std::uint64_t points = 0;
    const std::string step = "Importing " + source.fileName();
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        for (std::size_t i = 0; i < filled.size(); ++i) {
            if (filled[i]) {
                filled[i]->fill(source.values(i), count);
            }
        }
        if (query.next(count) != count) {
            throw core::Failure("The database took fewer points than it was given.");
        }
        points += count;
        if (progress) {
            progress(step, source.progress());
        }
    }
    return points;
}

// Elements that no column holds, though a later one of the same attribute has one.
FileList gapsOf(const std::vector<Column>& columns) {
    std::map<std::string, std::set<std::uint32_t>> elements;
    for (const Column& column : columns) {
        elements[column.attribute].insert(column.element);
    }
    FileList gaps;
    for (const auto& [name, found] : elements) {
        std::uint32_t element = 0;
        for (const std::uint32_t there : found) {
            for (; element < there; ++element) {
                gaps.add(name + "[" + std::to_string(element) + "]");
            }
            ++element;
        }
    }
    return gaps;
}

}  // namespace

std::string adviceToGoWithout(const std::string& attribute) {
    return attribute == "tarvo.id" ? advice().numberAnew : advice().leaveOut(attribute);
}

void addNotes(const PointSource& source, std::vector<std::string>& notes) {
    const FileList gaps = gapsOf(source.columns());
    if (!gaps.isEmpty()) {
        notes.push_back("\"" + source.fileName() + "\": no column holds " + gaps.text() +
                        ": all points get the default value there.");
    }
    for (const std::string& text : source.notes()) {
        notes.push_back("\"" + source.fileName() + "\": " + text);
    }
}

std::uint64_t lookAtColumns(
    PointSource& source, const std::function<void(std::size_t column, std::uint32_t count)>& look,
    const ImportProgress& progress) {
    const std::size_t columns = source.columns().size();
    const std::string step = "Looking at " + source.fileName();
    std::uint64_t points = 0;
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        std::atomic<std::size_t> next = 0;
        onAllCores(columns, [&] {
            for (std::size_t i = next++; i < columns; i = next++) {
                look(i, count);
            }
        });
        points += count;
        if (progress) {
            progress(step, source.progress());
        }
    }
    return points;
}

void addItem(qrb::pointcloud::MetaData& metaData, const std::string& name,
             const std::string& value) {
    std::string unique = name;
    for (int i = 2; metaData.exists(unique) && metaData.get(unique) != value; ++i) {
        unique = name + "." + std::to_string(i);
    }
    if (!metaData.exists(unique)) {
        metaData.set(unique, value);
    }
}

void addMetaData(qrb::pointcloud::MetaData& metaData, const PointSources& sources) {
    for (const auto& source : sources) {
        for (const auto& [name, value] : source->metaData()) {
            addItem(metaData, name, value);
        }
    }
}

std::uint64_t insertPoints(const qrb::Pointcloud& cloud, PointSource& source,
                           const std::vector<ColumnTarget>& targets,
                           const ImportProgress& progress) {
    auto query = cloud.insert();
    const std::vector<Column>& columns = source.columns();
    std::vector<std::unique_ptr<FilledColumn>> filled(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const ColumnTarget& target = targets[i];
        if (target.descriptor.empty()) {
            continue;
        }
        DataType type = columns[i].type;
        const void* values = source.values(i);
        if (target.replacement) {
            filled[i] = std::make_unique<FilledColumn>(type, target.noValue, *target.replacement,
                                                       source.largestBatch());
            type = filled[i]->type();
            values = filled[i]->values();
        }
        query.bind(target.descriptor, type, values, static_cast<std::int32_t>(dataTypeSize(type)));
    }
    std::uint64_t points = 0;
    try {
        points = insertBatches(query, source, filled, progress);
    } catch (const qrb::Error& error) {
        if (error.code() != QRB_ERROR_EXISTS) {
            throw;
        }
        throw core::Failure(error.what(), std::string(error.details() ? error.details() : "") +
                                              "\n" + advice().numberAnew);
    }
    query.close();
    return points;
}

}  // namespace tarvo::exchange
