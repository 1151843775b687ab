// The JSON texts that come from files and users, by the first byte: settings, definitions, roots,
// tables, changelog entries, metadata.
#include "engine/base/json.h"
#include "engine/session/changelogentry.h"
#include "engine/session/settings.h"
#include "engine/session/state.h"
#include "tests/fuzz/survive.h"

#include <cstdint>
#include <string>

using namespace tarvo;
using namespace tarvo::engine;

namespace {

// What was read and written again reads as the same.
template <typename Value>
void settings(std::string_view text) {
    Value value;
    session::fromJson(text, value);
    const std::string written = session::toJson(value);
    Value again;
    session::fromJson(written, again);
    fuzz::require(session::toJson(again) == written, "settings are read as they were written");
}

void definition(std::string_view text) {
    schema::AttributeRecord record;
    schema::recordFromJson(text, record);
    const std::string written = schema::toJson(record);
    schema::AttributeRecord again;
    schema::recordFromJson(written, again);
    fuzz::require(schema::toJson(again) == written, "definitions are read as they were written");
    schema::validate(record);
    const schema::Attribute attribute(record, 1);
    (void)schema::dataType(record);
    fuzz::require(attribute.grid.code(attribute.grid.value(attribute.defaultCode())) ==
                      attribute.defaultCode(),
                  "the value of a code has that code");
}

void table(std::string_view text) {
    const schema::AttributeTable read = session::attributesFromText(text);
    const std::string written = session::attributesText(read);
    fuzz::require(session::attributesText(session::attributesFromText(written)) == written,
                  "attribute tables are read as they were written");
}

void root(std::string_view text) {
    const std::string written = session::rootText(session::stateFromRoot(text));
    fuzz::require(session::rootText(session::stateFromRoot(written)) == written,
                  "roots are read as they were written");
}

void entry(std::string_view text) {
    const session::ChangelogLink link = session::changelogFromBlob(text);
    (void)session::verifyEntry(link.entry, {});
    session::Signer signer;
    signer.method = 1;
    signer.key = {1, 2, 3};
    // As all that are signed, it ends with the end of a line.
    std::string signedEntry = "[#1] " + link.entry + "\n";
    session::signEntry(signedEntry, signer);
    fuzz::require(session::verifyEntry(signedEntry, signer), "what was signed is found good");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    fuzz::survive([&] {
        switch (data[0]) {
            case 'c':
                return settings<session::CreateSettings>(text);
            case 'o':
                return settings<session::OpenSettings>(text);
            case 'a':
                return definition(text);
            case 't':
                return table(text);
            case 'r':
                return root(text);
            case 'l':
                return entry(text);
            default:
                (void)parseJson(text, "The text");
        }
    });
    return 0;
}
