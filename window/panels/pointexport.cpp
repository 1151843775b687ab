#include "window/panels/pointexport.h"

namespace tarvo::window {

namespace {

constexpr std::uint32_t exportBatch = 1000;

void writeLine(files::WholeFile& file, std::string& line) {
    line += '\n';
    file.write(line);
    line.clear();
}

}  // namespace

std::uint64_t exportPoints(const qrb::Pointcloud& database, const core::PointSelection& selection,
                           const QStringList& attributes, char separator, files::WholeFile& file,
                           const std::function<void(int)>& progress) {
    std::vector<core::PointColumn> columns;
    for (const QString& name : attributes)
        for (core::PointColumn& column :
             core::columnsOf(database.pointAttributes().get(name.toStdString())))
            columns.push_back(std::move(column));
    core::PointPages pages(database, selection, std::move(columns), exportBatch);

    std::string line = pages.header(separator);
    writeLine(file, line);
    std::uint64_t points = 0;
    while (const std::uint32_t count = pages.next()) {
        for (std::uint32_t row = 0; row < count; ++row) {
            pages.appendRow(line, row, separator);
            writeLine(file, line);
        }
        points += count;
        if (progress)
            progress(static_cast<int>(pages.progress()));
    }
    return points;
}

}  // namespace tarvo::window
