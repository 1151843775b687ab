#include "benchmarks/ours.h"

#include "qrb/loader.h"
#include "qrb/pointcloud.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <stdexcept>

namespace bench {

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

struct BoundField {
    const char* attribute;
    DataType type;
    std::size_t offset;
};

constexpr BoundField fields[] = {
    {"tarvo.xyz", DataType::DOUBLE, offsetof(Row, x)},
    {"tarvo.timestamp", DataType::DOUBLE, offsetof(Row, timestamp)},
    {"tarvo.reflectance", DataType::SINGLE, offsetof(Row, reflectance)},
    {"tarvo.amplitude", DataType::SINGLE, offsetof(Row, amplitude)},
    {"tarvo.deviation", DataType::UINT16, offsetof(Row, deviation)},
    {"tarvo.target_index", DataType::UINT8, offsetof(Row, targetIndex)},
    {"tarvo.target_count", DataType::UINT8, offsetof(Row, targetCount)},
    {"tarvo.class", DataType::UINT8, offsetof(Row, classification)},
};

template <typename Query>
void bindRows(Query& query, std::vector<Row>& rows) {
    for (const BoundField& field : fields)
        query.bind(field.attribute, field.type,
                   reinterpret_cast<std::uint8_t*>(rows.data()) + field.offset, sizeof(Row));
}

class Ours final : public Engine {
public:
    void import(const std::string& rowFile, const std::string& model,
                const std::string& target) override {
        const qrb::Context context("OFF", "");
        const qrb::Pointcloud source = opened(context, model);
        CreateSettings settings(context);
        settings.primaryAttribute = source.pointAttributes().get("tarvo.xyz");
        settings.cacheSize = cacheSize;
        qrb::Pointcloud cloud(context);
        cloud.create(target, settings);
        TransactionGuard transaction(cloud.transactions(), "Import", "benchmark");
        for (const BoundField& field : fields)
            if (!cloud.pointAttributes().exists(field.attribute))
                cloud.pointAttributes().add(source.pointAttributes().get(field.attribute));
        QueryInsert query = cloud.insert();
        std::vector<Row> batch(122880);
        bindRows(query, batch);
        forEachBatch(rowFile, [&](const Row* rows, std::uint32_t count) {
            std::copy(rows, rows + count, batch.begin());
            query.next(count);
        });
        query.close();
        transaction.commit();
    }
    void open(const std::string& file) override {
        m_context.emplace("OFF", "");
        m_cloud.emplace(opened(*m_context, file));
    }
    std::uint64_t count(const Condition& condition) override {
        QuerySelect query = m_cloud->select(condition.filter);
        std::uint64_t sum = 0;
        while (const std::uint32_t part = query.next(10'000'000))
            sum += part;
        return sum;
    }
    std::uint64_t firstPage(const Condition& condition) override {
        QuerySelect query = m_cloud->select(condition.filter);
        std::vector<Row> page(pageSize);
        bindRows(query, page);
        return query.next(pageSize);
    }

    static qrb::Pointcloud opened(const qrb::Context& context, const std::string& file) {
        OpenSettings settings(context);
        settings.cacheSize = cacheSize;
        qrb::Pointcloud cloud(context);
        cloud.open(file, settings);
        return cloud;
    }

private:
    std::optional<qrb::Context> m_context;
    std::optional<qrb::Pointcloud> m_cloud;
};

}  // namespace

std::unique_ptr<Engine> makeOurs() {
    qrb::loadLibrary({});
    return std::make_unique<Ours>();
}

void dumpRows(const std::string& database, const std::string& rowFile) {
    qrb::loadLibrary({});
    const qrb::Context context("OFF", "");
    QuerySelect query = Ours::opened(context, database).select();
    std::vector<Row> rows(100'000, Row{});
    std::vector<std::uint64_t> ids(rows.size());
    bindRows(query, rows);
    query.bind("tarvo.id", DataType::UINT64, ids.data(), sizeof ids[0]);
    std::FILE* file = std::fopen(rowFile.c_str(), "wb");
    if (!file)
        throw std::runtime_error("can't write " + rowFile);
    // As acquired, not as indexed: each row goes to its place.
    while (const std::uint32_t count = query.next(static_cast<std::uint32_t>(rows.size())))
        for (std::uint32_t i = 0; i < count; ++i) {
            if (i == 0 || ids[i] != ids[i - 1] + 1)
                std::fseek(file, static_cast<long>((ids[i] - 1) * sizeof(Row)), SEEK_SET);
            std::fwrite(&rows[i], sizeof(Row), 1, file);
        }
    const bool failed = std::ferror(file) != 0;
    if (std::fclose(file) != 0 || failed)
        throw std::runtime_error("can't write " + rowFile);
}

}  // namespace bench
