#include "tests/reliability/contents.h"

#include "qrb/error.h"
#include "qrb/pointcloud.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <regex>
#include <set>
#include <vector>

namespace tarvo::trial {

namespace fs = std::filesystem;
using qrb::pointcloud::DataType;

namespace {

class Summary {
public:
    void add(const std::string& text) {
        m_sum = (m_sum ^ std::hash<std::string>()(text)) * 0x100000001b3u;
    }
    std::string text() const { return std::to_string(m_sum); }

private:
    std::uint64_t m_sum = 0;
};

std::uint64_t addPointsOf(const qrb::Pointcloud& cloud, Summary& summary) {
    constexpr std::uint32_t batch = 5000;
    qrb::pointcloud::QuerySelect query = cloud.select();
    const std::vector<std::string> names = cloud.pointAttributes().list();
    std::vector<std::vector<double>> values;
    for (const std::string& name : names) {
        const std::uint32_t length = cloud.pointAttributes().get(name).length;
        values.emplace_back(batch * length);
        query.bind(name, DataType::DOUBLE, values.back().data(),
                   static_cast<std::int32_t>(length * sizeof(double)));
    }
    std::uint64_t sum = 0;
    while (const std::uint32_t count = query.next(batch)) {
        sum += count;
        for (const std::vector<double>& column : values) {
            const std::size_t size = column.size() / batch * count * sizeof(double);
            std::string bytes(size, '\0');
            std::memcpy(bytes.data(), column.data(), size);
            summary.add(bytes);
        }
    }
    return sum;
}

std::string textOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The changelog tells when each transaction was.
std::string withoutDates(const std::string& text) {
    static const std::regex date("20[0-9-]+[T ][0-9:.]+");
    return std::regex_replace(text, date, "");
}

}  // namespace

std::string faultsOf(const qrb::Pointcloud& cloud) {
    const std::string report = cloud.inspect(5);
    return report.find("\"fault_count\":0,") == report.npos ? "\n" + report : std::string();
}

std::string contentsOfDatabase(const std::string& file) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    cloud.open(file, qrb::pointcloud::OpenSettings(context));
    Summary summary;
    std::string result = "current " + std::to_string(cloud.transactions().current()) + " of";
    for (const std::uint32_t id : cloud.transactions().list()) {
        result += " " + std::to_string(id);
        const qrb::pointcloud::Transaction details = cloud.transactions().details(id);
        summary.add(details.title + details.comments + details.settings);
    }
    for (const std::string& name : cloud.metaData().list())
        summary.add(name + "=" + cloud.metaData().get(name));
    for (const std::string& name : cloud.pointAttributes().list())
        summary.add(cloud.pointAttributes().get(name).toJson());
    const std::uint64_t points = addPointsOf(cloud, summary);
    result += ", " + std::to_string(points) + " points, " + summary.text();
    return result + faultsOf(cloud);
}

std::string contentsOf(const std::string& folder) {
    std::set<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder))
        files.insert(entry.path());
    std::string result;
    for (const fs::path& file : files) {
        const std::string name = file.filename().string();
        if (name.find(".new-") != name.npos || name.ends_with("-journal"))
            continue;
        result += name + ": ";
        if (!name.ends_with(".qrbx")) {
            Summary bytes;
            bytes.add(withoutDates(textOf(file)));
            result += bytes.text();
        } else {
            try {
                result += contentsOfDatabase(file.string());
            } catch (const qrb::Error& error) {
                result += std::string("ERROR ") + error.what() + " " +
                          (error.details() ? error.details() : "");
            }
        }
        result += "\n";
    }
    return result;
}

void addPoints(const std::string& file) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    cloud.open(file, qrb::pointcloud::OpenSettings(context));
    qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "more", "trial");
    std::vector<double> xyz(30, 1.0);
    qrb::pointcloud::QueryInsert query = cloud.insert();
    query.bind(cloud.pointAttributes().primaryAttributeName(), DataType::DOUBLE, xyz.data(), 24);
    query.next(10);
    query.close();
    guard.commit();
}

}  // namespace tarvo::trial
