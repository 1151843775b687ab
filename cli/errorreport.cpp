#include "cli/errorreport.h"

#include "cli/json.h"
#include "cli/text.h"

#include <cstdio>
#include <string>

namespace tarvo::cli {

namespace {

void reportForPrograms(std::string_view text, std::string_view details,
                       std::optional<std::int32_t> code) {
    JsonText json;
    json.beginObject();
    json.key("error");
    json.beginObject();
    json.member("text", text);
    json.member("details", details);
    if (code) {
        json.member("code", static_cast<std::int64_t>(*code));
    }
    json.endObject();
    json.endObject();
    std::fprintf(stderr, "%s\n", json.compact().c_str());
}

}  // namespace

void reportError(std::string_view text, std::string_view details, bool asJson,
                 std::optional<std::int32_t> code) {
    if (asJson) {
        reportForPrograms(text, details, code);
        return;
    }
    std::fprintf(stderr, "qrbtool: %s\n", oneLine(text).c_str());
    const std::string safeDetails = printable(details);
    for (std::string_view rest = safeDetails; !rest.empty();) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        std::fprintf(stderr, "    %.*s\n", static_cast<int>(line.size()), line.data());
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
}

}  // namespace tarvo::cli
