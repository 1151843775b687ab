#include "engine/report/report.h"

#include "engine/report/check.h"
#include "engine/report/forms.h"

namespace tarvo::engine::report {

std::string inspect(session::Session& session, std::uint8_t format, std::uint64_t limit) {
    if (format < 1 || format > 5)
        throw Failure(ErrorCode::Argument, "The report format " + std::to_string(format) +
                                               " is unknown: 1 to 5 are possible.");
    if (format == 5)
        return checkReport(check(session));
    const Facts facts = gatherFacts(session);
    if (format == 1)
        return textReport(facts);
    if (format == 2)
        return jsonReport(facts);
    PointFacts points;
    points.step = sampleStep(facts, limit);
    points.histograms = makeHistograms(session, facts, points.step);
    if (format == 4)
        return histogramReport(facts, points);
    points.picture = drawPicture(session, facts, points.step);
    return htmlReport(facts, points);
}

}  // namespace tarvo::engine::report
