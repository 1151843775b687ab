#include "engine/validation/jsonschema.h"

#include "engine/base/json.h"
#include "engine/validation/evaluation.h"
#include "engine/validation/schemagraph.h"

#include <algorithm>

namespace tarvo::engine::validation {

namespace {

constexpr std::size_t maximumFindings = 1000;

}  // namespace

std::string toLine(const Finding& finding) {
    std::string line =
        (finding.pointer.empty() ? "The whole value" : finding.pointer) + ": " + finding.text;
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    return line;
}

struct JsonSchema::Private {
    Private(std::string_view text, std::string_view what)
        : json(parseJson(text, what)), graph(json) {}

    rapidjson::Document json;
    SchemaGraph graph;
};

JsonSchema::JsonSchema(std::string_view text, std::string_view what)
    : m_private(std::make_unique<Private>(text, what)) {}

JsonSchema::~JsonSchema() = default;

std::vector<Finding> JsonSchema::check(std::string_view text, std::string_view what) const {
    const rapidjson::Document value = parseJson(text, what);
    FindingList findings(maximumFindings);
    std::vector<Finding> result;
    try {
        (void)Evaluation().check(m_private->graph.root(), value, {}, &findings);
    } catch (const EnoughFindings&) {
        result.push_back({"", "", "", "", "has more faults than those listed here"});
    }
    for (Finding& finding : findings.take())
        result.push_back(std::move(finding));
    return result;
}

std::vector<std::string> JsonSchema::notes() const {
    std::vector<std::string> lines;
    for (const std::string& format : m_private->graph.unknownFormats())
        lines.push_back("The format " + quotedText(format) + " is not checked.");
    return lines;
}

}  // namespace tarvo::engine::validation
