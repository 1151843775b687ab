#include "mainwindow/pointexport.h"

#include "common/textformat.h"

#include <limits>

namespace {

constexpr std::uint32_t exportBatch = 1000;

struct ExportColumn {
    std::vector<double> values;
    int decimals;
};

void writeLine(tarvo::files::WholeFile& file, QByteArray& line) {
    line += '\n';
    file.write({line.constData(), static_cast<std::size_t>(line.size())});
    line.clear();
}

}  // namespace

std::uint64_t exportPoints(const tarvo::qrb::Pointcloud& database,
                           const PointReader::Selection& selection, const QStringList& attributes,
                           char separator, tarvo::files::WholeFile& file,
                           const std::function<void(int)>& progress) {
    auto query = selection.query(database);
    std::vector<ExportColumn> columns;
    QStringList names;
    for (const QString& name : attributes) {
        const auto attribute = database.pointAttributes().get(name.toStdString());
        const int decimals = tarvo::common::decimalsOfResolution(attribute.resolution);
        for (const QString& element :
             elementNames(name, attribute.length, std::numeric_limits<std::uint32_t>::max())) {
            columns.push_back({std::vector<double>(exportBatch), decimals});
            query.bind(element.toStdString(), tarvo::qrb::pointcloud::DataType::DOUBLE,
                       columns.back().values.data(), sizeof(double));
            names += element;
        }
    }

    QByteArray line = names.join(QChar(separator)).toUtf8();
    writeLine(file, line);
    std::uint64_t points = 0;
    while (const std::uint32_t count = query.next(exportBatch)) {
        for (std::uint32_t row = 0; row < count; ++row) {
            for (std::size_t column = 0; column < columns.size(); ++column) {
                if (column > 0)
                    line += separator;
                line +=
                    QByteArray::number(columns[column].values[row], 'f', columns[column].decimals);
            }
            writeLine(file, line);
        }
        points += count;
        if (progress)
            progress(static_cast<int>(query.progress()));
    }
    return points;
}
