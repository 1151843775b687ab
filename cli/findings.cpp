#include "cli/findings.h"

#include "cli/errors.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/text.h"
#include "qrb/error.h"

namespace tarvo::cli {

void reportFindings(const std::function<void()>& validate, bool asJson) {
    std::string lines;
    try {
        validate();
    } catch (const qrb::Error& error) {
        if (error.code() != QRB_ERROR_VALIDATION) {
            throw;
        }
        lines = error.details() != nullptr ? error.details() : "";
        if (lines.empty()) {
            lines = error.what();
        }
        if (lines.back() != '\n') {
            lines += '\n';
        }
    }
    if (asJson) {
        JsonText json;
        json.beginArray();
        for (std::size_t at = 0; at < lines.size();) {
            const std::size_t end = lines.find('\n', at);
            json.value(std::string_view(lines).substr(at, end - at));
            at = end + 1;
        }
        json.endArray();
        print(json.text());
    } else {
        print(lines.empty() ? "No problems detected!\n" : printable(lines));
    }
    if (!lines.empty()) {
        throw NegativeAnswer();
    }
}

}  // namespace tarvo::cli
