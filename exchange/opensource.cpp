#include "exchange/opensource.h"

#include "exchange/csv/source.h"
#include "exchange/las/source.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace tarvo::exchange {

std::unique_ptr<PointSource> openSource(const std::string& fileName, std::string format) {
    if (format.empty()) {
        std::string extension = std::filesystem::path(fileName).extension().string();
        std::transform(extension.begin(), extension.end(), extension.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        const bool text = extension == ".csv" || extension == ".txt" || extension == ".tsv" ||
                          extension == ".xyz";
        format = text ? "csv" : "las";
    }
    if (format == "csv") {
        return std::make_unique<csv::CsvSource>(fileName);
    }
    return std::make_unique<las::LasSource>(fileName);
}

}  // namespace tarvo::exchange
