#include "engine/report/forms.h"
#include "engine/report/text.h"

namespace tarvo::engine::report {

namespace {

std::string histogramLine(const std::string& place, const std::string& bin,
                          const std::string& range, std::uint64_t count, const std::string& name) {
    // The marks of CSV are the same before and after escaping: cells first, then the whole line.
    return "\n" + escaped(place + "," + bin + "," + range + "," + std::to_string(count) + "," +
                          csvCell(name));
}

}  // namespace

std::string histogramReport(const Facts& facts, const PointFacts& points) {
    std::string out = "<html><head><title>Attribute histograms</title></head><body><pre>";
    // A line end behind the last line, before or behind </pre>, would become a blank in its last
    // cell where the text is shown.
    out += "attribute,element,bin,from,to,count,name";
    if (!points.all())
        out += histogramLine(",", "sample", ",", points.points(), sampleText(points.step));
    for (const Histogram& histogram : points.histograms) {
        const schema::Attribute& attribute = facts.state->attributes[histogram.column.attribute];
        const std::string place =
            csvCell(attribute.record.name) + "," + std::to_string(histogram.column.element);
        for (std::size_t i = 0; i < histogram.bins.size(); ++i) {
            const Bin& bin = histogram.bins[i];
            out += histogramLine(place, std::to_string(i), bin.from + "," + bin.to, bin.count,
                                 bin.name);
        }
        if (histogram.invalid > 0)
            out += histogramLine(place, "invalid", ",", histogram.invalid, histogram.invalidName);
    }
    return out + "</pre></body></html>";
}

}  // namespace tarvo::engine::report
