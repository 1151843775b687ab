#include "cli/findings.h"

#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/text.h"

namespace tarvo::cli {

void reportFindings(const qrb::pointcloud::Findings& findings) {
    note(findings.notes);
    if (manner().json) {
        JsonText json;
        json.beginArray();
        for (const qrb::pointcloud::Finding& finding : findings.list) {
            json.value(finding.line);
        }
        json.endArray();
        print(json.text());
    } else {
        std::string lines;
        for (const qrb::pointcloud::Finding& finding : findings.list) {
            lines += finding.line + "\n";
        }
        print(lines.empty() ? "No problems detected!\n" : printable(lines));
    }
    if (!findings.list.empty()) {
        throw NegativeAnswer();
    }
}

}  // namespace tarvo::cli
