#include "engine/report/forms.h"
#include "engine/report/text.h"
#include "numbers/numbertext.h"

namespace tarvo::engine::report {

std::string chunkText(const session::CreateSettings& settings, bool grouped) {
    return settings.chunkMode == static_cast<std::uint32_t>(session::ChunkMode::PointCount)
               ? "up to " +
                     (grouped ? numbers::groupedText(settings.chunkSize)
                              : std::to_string(settings.chunkSize)) +
                     " points"
               : "edge length 2^" + std::to_string(settings.chunkSize) + " steps";
}

std::string levelOfDetailText(const session::State& state) {
    const std::string size = std::to_string(state.chunkSizeLod);
    if (state.chunkSizeLod == 0)
        return "none";
    return state.lodMode == static_cast<std::uint32_t>(session::LodMode::Thinout)
               ? "thinout, " + size + " % of the points below"
               : "combine, 2^" + size + " cells along each edge";
}

std::string bytesPerPointText(const Facts& facts, std::size_t attribute) {
    if (facts.state->pointCount == 0)
        return {};
    return numbers::roundedText(static_cast<double>(facts.attributes[attribute].leafBytes) /
                                    static_cast<double>(facts.state->pointCount),
                                3);
}

std::string sampleText(std::uint64_t step) {
    return "one leaf in " + std::to_string(step) + " of the index";
}

std::vector<std::pair<std::string, std::uint64_t>> storageParts(const Facts& facts) {
    return {{"Points", facts.pointBytes},
            {"Level of detail", facts.levelOfDetailBytes},
            {"Index", facts.indexBytes},
            {"Metadata", facts.metaDataBytes},
            {"Older transactions, free space and the rest", facts.otherBytes()}};
}

double extentSize(const schema::Grid& grid, const schema::ElementStatistics& statistics) {
    return grid.value(statistics.maximum) - grid.value(statistics.minimum);
}

}  // namespace tarvo::engine::report
