// Files and metadata items compared with schemas, and files made from them.
#include "catalogue/catalogue.h"
#include "engine/capi/handles.h"
#include "engine/validation/conformance.h"
#include "engine/validation/jsonschema.h"
#include "engine/validation/newfile.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

// Throws Failure(Validation) unless there is nothing to tell.
void report(const std::string& what, const std::vector<std::string>& lines) {
    if (lines.empty())
        return;
    std::string details;
    for (const std::string& line : lines)
        details += (details.empty() ? "" : "\n") + line;
    throw Failure(
        ErrorCode::Validation,
        what + ": " +
            (lines.size() == 1 ? "1 problem." : std::to_string(lines.size()) + " problems."),
        details);
}

void validateJson(const std::string& value, const std::string& schema, const std::string& name) {
    std::vector<std::string> lines;
    for (const validation::Finding& finding : validation::JsonSchema(schema).check(value, name))
        lines.push_back(validation::toLine(finding));
    report(name + " does not satisfy its JSON schema", lines);
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
    return call(context, [&] {
        const auto session = sessionOf(pointcloud);
        const validation::FileSchema fileSchema = validation::readFileSchema(textOf(schema));
        report("The database does not agree with the file schema \"" + fileSchema.identifier + "\"",
               validation::deviations(*session, fileSchema, strict != 0));
    });
}

qrb_status qrb_pointcloud_meta_data_validate(qrb_context* context, qrb_pointcloud* pointcloud,
                                             const char* name, const char* schema) {
    return call(context, [&] {
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
        validateJson(value, text, "The metadata item \"" + item + "\"");
    });
}

qrb_status qrb_pointcloud_meta_data_validate_json(qrb_context* context, qrb_pointcloud* pointcloud,
                                                  const char* value, const char* schema) {
    return call(context, [&] {
        checkUnused(pointcloud);
        validateJson(textOf(value), textOf(schema), "The value");
    });
}

}  // extern "C"
