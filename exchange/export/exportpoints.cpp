#include "exchange/export/exportpoints.h"

#include "exchange/las/write.h"
#include "exchange/ply/write.h"
#include "exchange/table/delimited.h"
#include "files/path.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace tarvo::exchange {

namespace {

constexpr std::array<std::pair<const char*, ExportFormat>, 5> formats = {
    {{"las", ExportFormat::Las},
     {"laz", ExportFormat::Laz},
     {"ply", ExportFormat::Ply},
     {"csv", ExportFormat::Csv},
     {"xyz", ExportFormat::Xyz}}};

Exported writeText(PointSource& source, const std::vector<core::PointColumn>& columns,
                   const core::DelimitedForm& form, files::WholeFile& file,
                   const ImportProgress& progress) {
    const std::string step = "Exporting " + source.fileName();
    core::DelimitedWriter writer(columns, form, [&](std::string_view text) { file.write(text); });
    Exported exported;
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        addBatch(writer, source, count);
        exported.points += count;
        if (progress) {
            progress(step, source.progress());
        }
    }
    writer.finish();
    return exported;
}

}  // namespace

std::optional<ExportFormat> exportFormat(const std::string& name) {
    for (const auto& [known, format] : formats) {
        if (name == known) {
            return format;
        }
    }
    return std::nullopt;
}

std::optional<ExportFormat> formatOfFile(const std::string& fileName) {
    std::string extension = files::nameOf(files::pathOf(fileName).extension());
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension.empty() ? std::nullopt : exportFormat(extension.substr(1));
}

std::vector<std::string> defaultAttributes(const qrb::Pointcloud& database, ExportFormat format) {
    const auto& attributes = database.pointAttributes();
    if (format == ExportFormat::Xyz) {
        return {attributes.primaryAttributeName()};
    }
    std::vector<std::string> names = attributes.list();
    std::erase(names, attributes.pointIdName());
    return names;
}

Exported exportPoints(PointSource& source, const std::vector<core::PointColumn>& columns,
                      const ExportOptions& options, files::WholeFile& file,
                      const ImportProgress& progress) {
    switch (options.format) {
        case ExportFormat::Csv:
            return writeText(source, columns, {}, file, progress);
        case ExportFormat::Xyz:
            return writeText(source, columns, {' ', UINT64_MAX, false}, file, progress);
        case ExportFormat::Ply: {
            const ply::Written written =
                ply::writePoints(source, columns, options.asText, file.stream(), progress);
            return {written.points, written.notes};
        }
        case ExportFormat::Las:
        case ExportFormat::Laz:
            break;
    }
    const las::Written written = las::writePoints(
        source, {options.pointFormat, options.scale, options.format == ExportFormat::Laz},
        file.stream(), progress);
    return {written.points, written.notes};
}

}  // namespace tarvo::exchange
