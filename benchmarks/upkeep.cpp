#include "benchmarks/upkeep.h"

#include "benchmarks/measurement.h"
#include "core/changelogentries.h"
#include "core/creationsettings.h"
#include "core/referencesystem.h"
#include "core/valueformat.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

std::uint64_t pointCount(const qrb::Pointcloud& cloud) {
    IndexNode root;
    cloud.stat().index(root);
    return static_cast<std::uint64_t>(root.pointCountTotal);
}

// The questions of the window's panels, when they are shown what is in the file.

void askTransactions(const qrb::Pointcloud& cloud) {
    const Transactions& transactions = cloud.transactions();
    (void)transactions.current();
    (void)transactions.pending();
    for (const std::uint32_t id : transactions.list())
        (void)transactions.details(id);
}

void askChangelog(const qrb::Pointcloud& cloud) {
    (void)core::readChangelog(cloud.changelog());
}

void askMetaData(const qrb::Pointcloud& cloud) {
    const MetaData& metaData = cloud.metaData();
    for (const std::string& name : metaData.list()) {
        (void)metaData.get(name);
        (void)metaData.verifySignature(name, 0, {});
    }
}

void askAttributes(const qrb::Pointcloud& cloud) {
    const PointAttributes& attributes = cloud.pointAttributes();
    for (const std::string& name : attributes.list()) {
        (void)attributes.get(name);
        (void)attributes.group(name);
    }
}

void askIndex(const qrb::Pointcloud& cloud) {
    (void)pointCount(cloud);
}

void askSummary(const qrb::Pointcloud& cloud) {
    (void)cloud.getUuid();
    (void)cloud.stat().root();
    (void)cloud.pointAttributes().get(cloud.pointAttributes().primaryAttributeName());
    (void)core::referenceSystem(cloud.metaData());
    (void)cloud.management().getLodMode();
    (void)cloud.management().getChunkSizeLOD();
    (void)core::creationSettings(cloud);
}

void askStatistics(const qrb::Pointcloud& cloud) {
    const QueryStat stat = cloud.stat();
    for (const std::string& name : cloud.pointAttributes().list()) {
        const PointAttribute attribute = cloud.pointAttributes().get(name);
        const DataType type = core::ValueFormat(attribute).type();
        std::vector<std::uint64_t> values(attribute.length);
        stat.minimum(1, name, type, values.data(), false);
        stat.maximum(1, name, type, values.data(), false);
        (void)stat.revision(1, name);
    }
}

using Panel = std::pair<const char*, void (*)(const qrb::Pointcloud&)>;
constexpr Panel panels[] = {
    {"transactions", askTransactions},
    {"changelog", askChangelog},
    {"metadata", askMetaData},
    {"attributes", askAttributes},
    {"point index", askIndex},
    {"file and creation settings", askSummary},
    {"statistics of the root", askStatistics},
};

// Ids that are evenly spread over all points, which are numbered from 1; made as they are asked
// for, so that the memory measured is the library's.
class SpreadIds {
public:
    SpreadIds(std::uint64_t points, std::uint64_t count) : m_points(points), m_count(count) {
        m_batch.resize(std::min<std::uint64_t>(count, 100'000));
    }

    std::uint64_t* batch() { return m_batch.data(); }
    std::size_t batchSize() const { return m_batch.size(); }
    // Puts the next ones into the batch; their number, 0 at the end.
    std::uint32_t next() {
        std::uint32_t size = 0;
        for (; size < m_batch.size() && m_made < m_count; ++m_made)
            m_batch[size++] = 1 + m_made * m_points / m_count;
        return size;
    }

private:
    std::uint64_t m_points;
    std::uint64_t m_count;
    std::uint64_t m_made = 0;
    std::vector<std::uint64_t> m_batch;
};

std::uint64_t updatePoints(qrb::Pointcloud& cloud, SpreadIds& ids, std::uint16_t pointClass) {
    const std::vector<std::uint16_t> classes(ids.batchSize(), pointClass);
    QueryUpdate query = cloud.update();
    query.bind("tarvo.id", DataType::UINT64, ids.batch(), sizeof *ids.batch());
    query.bind("tarvo.class", DataType::UINT16, classes.data(), sizeof classes[0]);
    std::uint64_t changed = 0;
    while (const std::uint32_t count = ids.next())
        changed += query.next(count);
    return changed;
}

std::uint64_t fillPoints(qrb::Pointcloud& cloud, const std::string& filter) {
    const std::uint16_t pointClass = 3;
    QueryFill query = cloud.fill(filter);
    query.bind("tarvo.class", DataType::UINT16, &pointClass);
    std::uint64_t changed = 0;
    while (const std::uint32_t count = query.next(10'000'000))
        changed += count;
    return changed;
}

std::uint64_t removePoints(qrb::Pointcloud& cloud, SpreadIds& ids) {
    QueryRemove query = cloud.remove();
    query.bind(DataType::UINT64, ids.batch(), sizeof *ids.batch());
    std::uint64_t removed = 0;
    while (const std::uint32_t count = ids.next())
        removed += query.next(count);
    return removed;
}

std::uint64_t buildLod(qrb::Pointcloud& cloud, std::uint64_t points) {
    cloud.management().setLodMode(1);
    cloud.management().setChunkSizeLOD(10);
    return points;
}

std::uint64_t changed(qrb::Pointcloud& cloud, const std::function<std::uint64_t()>& change) {
    TransactionGuard transaction(cloud.transactions(), "Change", "benchmark");
    const std::uint64_t answer = change();
    transaction.commit();
    return answer;
}

void runPanels(const std::string& file) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    const auto tellAbout = [](const char* name, const std::function<void()>& work) {
        tell(name, measured([&] {
                 work();
                 return std::uint64_t{0};
             }));
    };
    tellAbout("open", [&] { cloud.open(file, OpenSettings(context)); });
    for (const auto& [name, ask] : panels)
        tellAbout(name, [&, question = ask] { question(cloud); });
}

}  // namespace

const std::vector<std::string> panelNames = [] {
    std::vector<std::string> names = {"open"};
    for (const auto& panel : panels)
        names.emplace_back(panel.first);
    return names;
}();

void runUpkeep(const std::vector<std::string>& words) {
    const std::string& task = words.at(0);
    if (task == "panels")
        return runPanels(words.at(1));
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    cloud.open(words.at(1), OpenSettings(context));
    const std::uint64_t points = pointCount(cloud);
    std::function<std::uint64_t()> work;
    SpreadIds ids(points, task == "update" || task == "remove" ? std::stoull(words.at(2)) : 0);
    if (task == "update") {
        const auto pointClass = static_cast<std::uint16_t>(std::stoul(words.at(3)));
        work = [&, pointClass] {
            return changed(cloud, [&] { return updatePoints(cloud, ids, pointClass); });
        };
    } else if (task == "remove") {
        work = [&] { return changed(cloud, [&] { return removePoints(cloud, ids); }); };
    } else if (task == "fill") {
        work = [&] { return changed(cloud, [&] { return fillPoints(cloud, words.at(2)); }); };
    } else if (task == "lod") {
        work = [&] { return changed(cloud, [&] { return buildLod(cloud, points); }); };
    } else if (task == "check") {
        work = [&] { return std::uint64_t{cloud.inspect(5).size() > 0}; };
    } else if (task == "vacuum") {
        work = [&] {
            cloud.management().finalize();
            cloud.management().vacuum();
            return std::uint64_t{1};
        };
    } else {
        throw std::runtime_error("no such task: " + task);
    }
    tell(task, measured(work));
}

}  // namespace bench
