#include "window/panels/pointexport.h"

#include "core/delimitedpoints.h"

namespace tarvo::window {

std::uint64_t exportPoints(const qrb::Pointcloud& database, const core::PointSelection& selection,
                           const QStringList& attributes, char separator, files::WholeFile& file,
                           const std::function<void(int)>& progress) {
    std::vector<core::PointColumn> columns;
    for (const QString& name : attributes)
        for (core::PointColumn& column :
             core::columnsOf(database.pointAttributes().get(name.toStdString())))
            columns.push_back(std::move(column));
    return core::writeDelimited(
        database, selection, columns, {separator}, [&](std::string_view text) { file.write(text); },
        progress);
}

}  // namespace tarvo::window
