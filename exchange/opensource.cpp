#include "exchange/opensource.h"

#include "core/error.h"
#include "exchange/csv/source.h"
#include "exchange/e57/source.h"
#include "exchange/format.h"
#include "exchange/inputfile.h"
#include "exchange/las/source.h"
#include "exchange/ply/source.h"
#include "exchange/ptx/source.h"
#include "exchange/text/source.h"

namespace tarvo::exchange {

namespace {

std::string formatOf(const std::string& fileName) {
    const FileKind kind = kindOfFile(fileName);
    if (kind.format.empty()) {
        throw core::Failure(
            "\"" + fileName + "\" is no point cloud that can be read: it is " + kind.what + ".",
            kind.what.find("UTF-16") != std::string::npos ? "Save the text in UTF-8 or ASCII."
            : kind.what.find("carriage") != std::string::npos
                ? "Save it with the line ends of Unix or Windows."
                : "Points are read from LAS, LAZ, PLY, PTX and E57 files and from texts of "
                  "numbers.");
    }
    return kind.format;
}

}  // namespace

std::string sourceFormat(const std::string& fileName, std::string format,
                         const std::vector<std::string>& columnNames) {
    if (format.empty()) {
        format = formatOf(fileName);
    } else {
        (void)InputFile(fileName);
    }
    if (!columnNames.empty() && format != "text") {
        throw core::Failure("\"" + fileName + "\" tells by itself what its columns mean.",
                            "Names of columns are given to texts without a header line.");
    }
    return format;
}

std::unique_ptr<PointSource> openSource(const std::string& fileName, std::string format,
                                        const std::vector<std::string>& columnNames,
                                        const OpenProgress& progress) {
    format = sourceFormat(fileName, std::move(format), columnNames);
    if (format == "csv") {
        return std::make_unique<csv::CsvSource>(fileName, progress);
    }
    if (format == "text") {
        return std::make_unique<text::TextSource>(fileName, columnNames, progress);
    }
    if (format == "ply") {
        return std::make_unique<ply::PlySource>(fileName);
    }
    if (format == "ptx") {
        return std::make_unique<ptx::PtxSource>(fileName, progress);
    }
    if (format == "e57") {
        return std::make_unique<e57::E57Source>(fileName);
    }
    return std::make_unique<las::LasSource>(fileName);
}

}  // namespace tarvo::exchange
