// Files and metadata items compared with schemas, and files made from them.
#include "catalogue/catalogue.h"
#include "engine/base/json.h"
#include "engine/base/utf8.h"
#include "engine/capi/handles.h"
#include "engine/validation/conformance.h"
#include "engine/validation/jsonschema.h"
#include "engine/validation/newfile.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

std::string reportText(const std::vector<validation::Deviation>& deviations,
                       const std::vector<std::string>& notes) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("findings");
    writer.StartArray();
    for (const validation::Deviation& deviation : deviations) {
        writer.StartObject();
        if (!deviation.attribute.empty())
            writeMember(writer, "attribute", validUtf8(deviation.attribute));
        if (!deviation.item.empty())
            writeMember(writer, "item", validUtf8(deviation.item));
        writeMember(writer, "pointer", validUtf8(deviation.finding.pointer));
        writeMember(writer, "keyword", validUtf8(deviation.finding.keyword));
        writeMember(writer, "expected", validUtf8(deviation.finding.expected));
        writeMember(writer, "found", validUtf8(deviation.finding.found));
        writeMember(writer, "text", validUtf8(deviation.finding.text));
        writeMember(writer, "line", validUtf8(deviation.line));
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("notes");
    writer.StartArray();
    for (const std::string& note : notes)
        writeText(writer, validUtf8(note));
    writer.EndArray();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

// Keeps what was found; throws Failure(Validation) unless that is nothing.
void report(Context& context, const std::string& what,
            const std::vector<validation::Deviation>& deviations,
            const std::vector<std::string>& notes = {}) {
    context.findings = reportText(deviations, notes);
    if (deviations.empty())
        return;
    std::string details;
    for (const validation::Deviation& deviation : deviations)
        details += (details.empty() ? "" : "\n") + deviation.line;
    throw Failure(
        ErrorCode::Validation,
        what + (deviations.size() == 1 ? ": 1 problem."
                                       : ": " + std::to_string(deviations.size()) + " problems."),
        details);
}

// item: empty for a value that is none.
void validateJson(Context& context, const std::string& value, const std::string& schema,
                  const std::string& name, const std::string& item) {
    const validation::JsonSchema jsonSchema(schema);
    std::vector<validation::Deviation> deviations;
    for (validation::Finding& finding : jsonSchema.check(value, name)) {
        const std::string line = validation::toLine(finding);
        deviations.push_back({"", item, std::move(finding), line});
    }
    report(context, name + " does not satisfy its JSON schema", deviations, jsonSchema.notes());
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_create_with_schema(qrb_context* context, qrb_pointcloud* pointcloud,
                                             const char* file_name,
                                             const qrb_create_settings* settings,
                                             const char* schema, uint8_t optionals) {
    return call(context, [&](Context& bound) {
        const auto object = closed(pointcloud);
        const session::CreateSettings values = valueOr(settings, "settings");
        const std::string fileName = textOf(file_name);
        const validation::FileSchema fileSchema = validation::readFileSchema(textOf(schema));
        object->database = createAndOpen(fileName, values, bound.api, [&] {
            validation::createFile(fileName, values, bound.api, fileSchema, optionals != 0);
        });
    });
}

qrb_status qrb_pointcloud_management_validate(qrb_context* context, qrb_pointcloud* pointcloud,
                                              const char* schema, uint8_t strict) {
    return call(context, [&](Context& bound) {
        bound.findings.clear();
        const auto session = sessionOf(pointcloud);
        const validation::FileSchema fileSchema = validation::readFileSchema(textOf(schema));
        report(bound,
               "The database does not agree with the file schema \"" + fileSchema.identifier + "\"",
               validation::deviations(*session, fileSchema, strict != 0),
               validation::placeholders(*session));
    });
}

qrb_status qrb_pointcloud_meta_data_validate(qrb_context* context, qrb_pointcloud* pointcloud,
                                             const char* name, const char* schema) {
    return call(context, [&](Context& bound) {
        bound.findings.clear();
        const std::string item = textOf(name);
        const std::string value = sessionOf(pointcloud)->metaData().get(item);
        std::string text = textOf(schema);
        if (text.empty()) {
            const auto* entry = tarvo::catalogue::findMetaData(item);
            if (!entry)
                throw Failure(ErrorCode::NotFound,
                              "\"" + item + "\" is not a default metadata item.",
                              "Give the JSON schema to check it against.");
            text = entry->schema;
        }
        validateJson(bound, value, text, "The metadata item \"" + item + "\"", item);
    });
}

qrb_status qrb_pointcloud_meta_data_validate_json(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  const char* value, const char* schema) {
    return call(context, [&](Context& bound) {
        bound.findings.clear();
        checkUnused(pointcloud);
        validateJson(bound, textOf(value), textOf(schema), "The value", "");
    });
}

}  // extern "C"
