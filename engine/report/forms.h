// The four forms of a report: what was gathered, written down. None of them reads the database.
#pragma once

#include "engine/report/facts.h"
#include "engine/report/histogram.h"
#include "engine/report/picture.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::engine::report {

// What was read of the points.
struct PointFacts {
    std::uint64_t step = 1;             // every step-th leaf was read
    std::vector<Histogram> histograms;  // of every element of every attribute
    std::optional<Picture> picture;

    bool all() const { return step == 1; }
    // Every element has as many values.
    std::uint64_t points() const {
        return histograms.empty() ? 0 : histograms.front().count + histograms.front().invalid;
    }
};

// Phrases that the text and the HTML form share.
// grouped: a number of points has commas between the thousands.
std::string chunkText(const session::CreateSettings& settings, bool grouped);
std::string levelOfDetailText(const session::State& state);
std::string bytesPerPointText(const Facts& facts, std::size_t attribute);
// "one leaf in 3 of the index"
std::string sampleText(std::uint64_t step);
// What the parts of the file take, together its size.
std::vector<std::pair<std::string, std::uint64_t>> storageParts(const Facts& facts);
// Of a range, at the resolution that its values have.
double extentSize(const schema::Grid& grid, const schema::ElementStatistics& statistics);

std::string textReport(const Facts& facts);
std::string jsonReport(const Facts& facts);
// For a rich-text widget: tables, attributes in place of style sheets, pictures as part of the
// text; no colour of text or page, so that it can be read on light and dark ground. Well-formed as
// XML too.
std::string htmlReport(const Facts& facts, const PointFacts& points);
// Comma-separated values, which are what can be seen and copied of an HTML text.
std::string histogramReport(const Facts& facts, const PointFacts& points);

}  // namespace tarvo::engine::report
