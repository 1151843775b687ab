#include "exchange/las/write.h"

#include "exchange/las/crs.h"
#include "exchange/las/crsrecords.h"
#include "exchange/las/encode.h"
#include "exchange/las/origin.h"
#include "exchange/las/ownrecord.h"
#include "exchange/las/recordwriter.h"
#include "exchange/las/waverecords.h"
#include "exchange/table/threads.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <iterator>

namespace tarvo::exchange::las {

namespace {

// Points that are put together at once.
constexpr std::uint32_t encodedAtOnce = 4096;

Record recordOf(const char* user, std::uint16_t id, const char* description,
                std::vector<std::uint8_t> data) {
    Record record;
    record.userId = user;
    record.recordId = id;
    record.description = description;
    record.length = data.size();
    record.data = std::move(data);
    return record;
}

void setDate(FileDescription& description) {
    using namespace std::chrono;
    const sys_days today = floor<days>(system_clock::now());
    const year_month_day date{today};
    description.creationYear = static_cast<std::uint16_t>(static_cast<int>(date.year()));
    description.creationDay =
        static_cast<std::uint16_t>((today - sys_days{date.year() / January / 1}).count() + 1);
}

bool hasWaves(const RecordPlan& plan, const std::vector<Column>& columns) {
    const std::uint32_t ends = pointSize(plan.pointFormat);
    return std::ranges::any_of(plan.fields, [&](const PlannedField& field) {
        return field.field.offset < ends &&
               columns[field.column].attribute == "las.wave_descriptor_index";
    });
}

FileDescription describe(const RecordPlan& plan, const Origin& origin, CrsRecords crs,
                         WaveRecords waves, bool isCompressed) {
    FileDescription description;
    description.pointFormat = plan.pointFormat;
    description.recordLength = plan.recordLength;
    description.scale = plan.scale;
    description.offset = plan.offset;
    description.compress = isCompressed;
    description.systemIdentifier = "EXPORT";
    description.generatingSoftware = "qrbtool";
    setDate(description);
    if (crs.isText || plan.pointFormat >= 6) {
        description.globalEncoding |= wktCounts;
    }
    if (origin.timeBase && origin.timeBase->epoch == standardEpoch) {
        description.globalEncoding |= standardTime;
    }
    description.globalEncoding |= waves.globalEncoding;
    description.records = std::move(crs.records);
    std::ranges::move(waves.records, std::back_inserter(description.records));
    if (!plan.extraBytes.empty()) {
        description.records.push_back(recordOf("LASF_Spec", 4, "Extra bytes", plan.extraBytes));
    }
    description.records.push_back(recordOf(ownUserId, ownRecordId, "Attributes",
                                           {plan.ownRecord.begin(), plan.ownRecord.end()}));
    return description;
}

// A batch of the source as records; returns how many coordinates were rounded.
std::uint64_t encodeBatch(const PointSource& source, const RecordPlan& plan, std::uint32_t count,
                          std::vector<std::uint8_t>& records) {
    records.assign(std::size_t{count} * plan.recordLength, 0);
    std::atomic<std::uint32_t> next = 0;
    std::atomic<std::uint64_t> rounded = 0;
    onAllCores((count + encodedAtOnce - 1) / encodedAtOnce, [&] {
        for (std::uint32_t begin = next.fetch_add(encodedAtOnce); begin < count;
             begin = next.fetch_add(encodedAtOnce)) {
            std::uint64_t found = 0;
            for (const PlannedField& planned : plan.fields) {
                const DataType type = source.columns()[planned.column].type;
                const auto* const values =
                    static_cast<const std::uint8_t*>(source.values(planned.column));
                found += encode(planned.field, type, values + begin * dataTypeSize(type),
                                std::min(encodedAtOnce, count - begin),
                                records.data() + std::size_t{begin} * plan.recordLength,
                                plan.recordLength);
            }
            rounded += found;
        }
    });
    return rounded;
}

}  // namespace

Written writePoints(PointSource& source, const WriteOptions& options, std::FILE* file,
                    const ImportProgress& progress) {
    const Origin origin = source.origin();
    CrsRecords crs;
    if (origin.system) {
        crs = crsRecords(*origin.system, source.metaData());
    }
    const Survey survey = surveyPoints(source, progress);
    const RecordPlan plan =
        planRecords(source.columns(), survey,
                    {options.pointFormat, options.scale, !crs.records.empty() && !crs.isText});
    Written written;
    if (!crs.leftOut.empty()) {
        written.notes.push_back("The reference system is left out: " + crs.leftOut + ".");
    }
    WaveRecords waves;
    if (hasWaves(plan, source.columns())) {
        waves = waveRecords(source.metaData());
        written.notes.insert(written.notes.end(), waves.notes.begin(), waves.notes.end());
    }
    RecordWriter writer(
        file, describe(plan, origin, std::move(crs), std::move(waves), options.compressed));
    const std::string step = "Exporting " + source.fileName();
    std::vector<std::uint8_t> records;
    std::uint64_t rounded = 0;
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        rounded += encodeBatch(source, plan, count, records);
        writer.add(records.data(), count);
        written.points += count;
        if (progress) {
            progress(step, source.progress());
        }
    }
    writer.finish();
    if (!plan.rounds && rounded > 0) {
        throw core::Failure("The file would hold " + std::to_string(rounded) +
                                " coordinates that are not those of the points.",
                            "Give --scale, for example --scale 0.001, to round coordinates to it.");
    }
    if (options.scale && rounded > 0) {
        written.notes.push_back(std::to_string(rounded) +
                                " coordinates were rounded to the scale.");
    }
    return written;
}

}  // namespace tarvo::exchange::las
