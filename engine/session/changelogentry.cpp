#include "engine/session/changelogentry.h"

#include "engine/base/json.h"
#include "engine/base/utf8.h"

#include <algorithm>

namespace tarvo::engine::session {

namespace {

constexpr std::string_view signatureStart = "\nSignature: ";

SignedText asSigned(std::string_view entry) {
    return {"changelog entry", {}, entry, ""};
}

// A text of somebody else within an entry: it must look neither like another entry nor like a
// signature.
std::string foreignText(std::string_view foreign, bool oneLine = false) {
    const std::string text = validUtf8(foreign);
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\r')
            continue;
        if (c == '\n') {
            result += oneLine ? " " : "\n    ";
        } else {
            result += c;
            if (c == '[' && i + 1 < text.size() && text[i + 1] == '#')
                result += ' ';
        }
    }
    while (!result.empty() && (result.back() == ' ' || result.back() == '\n'))
        result.pop_back();
    return result;
}

void addLine(std::string& entry, std::string_view topic, std::string_view text) {
    if (text.empty())
        return;
    entry += topic;
    entry += ": ";
    entry += foreignText(text);
    entry += '\n';
}

// "added a, b; removed c", without the parts that are empty.
class ChangeList {
public:
    void add(const char* verb, const std::string& what) {
        const bool known = !m_parts.empty() && m_parts.back().first == verb;
        if (known)
            m_parts.back().second += ", " + what;
        else
            m_parts.emplace_back(verb, what);
    }
    std::string text() const {
        std::string result;
        for (const auto& [verb, what] : m_parts)
            result += (result.empty() ? "" : "; ") + std::string(verb) + " " + what;
        return result;
    }

private:
    std::vector<std::pair<const char*, std::string>> m_parts;
};

std::string pointChanges(const State& before, const State& after, const ChangeNotes& notes) {
    ChangeList list;
    const auto add = [&list](const char* verb, std::uint64_t count) {
        if (count > 0)
            list.add(verb, std::to_string(count));
    };
    add("inserted", notes.inserted);
    add("updated", notes.updated);
    add("removed", notes.removed);
    if (list.text().empty() && before.pointCount == after.pointCount)
        return {};
    return list.text() + "; now " + std::to_string(after.pointCount);
}

std::string attributeChanges(const State& before, const State& after) {
    ChangeList list;
    for (const schema::Attribute& attribute : after.attributes.all())
        if (before.attributes.find(attribute.record.name) < 0)
            list.add("added", attribute.record.name);
    for (const schema::Attribute& attribute : after.attributes.all()) {
        const int old = before.attributes.find(attribute.record.name);
        if (old >= 0 &&
            schema::toJson(before.attributes[old].record) != schema::toJson(attribute.record))
            list.add("redefined", attribute.record.name);
    }
    for (const schema::Attribute& attribute : before.attributes.all())
        if (after.attributes.find(attribute.record.name) < 0)
            list.add("removed", attribute.record.name);
    return list.text();
}

std::string metaDataChanges(const State& before, const State& after) {
    ChangeList list;
    for (const auto& [name, item] : after.metaData)
        if (before.metaData.count(name) == 0)
            list.add("added", name);
    for (const auto& [name, item] : after.metaData) {
        const auto old = before.metaData.find(name);
        if (old != before.metaData.end() && !(old->second.value == item.value))
            list.add("changed", name);
    }
    for (const auto& [name, item] : after.metaData) {
        const auto old = before.metaData.find(name);
        if (item.signature != (old == before.metaData.end() ? "" : old->second.signature))
            list.add(item.signature.empty() ? "signature removed from" : "signed", name);
    }
    for (const auto& [name, item] : before.metaData)
        if (after.metaData.count(name) == 0)
            list.add("removed", name);
    return list.text();
}

}  // namespace

std::string changelogEntry(const State& before, const State& after, const ChangeNotes& notes) {
    const TransactionRecord& t = after.transaction;
    std::string entry = "[#" + std::to_string(t.id) + "] " + foreignText(t.title, true) + "\n";
    addLine(entry, "Agent", foreignText(t.agent, true));
    addLine(entry, "Library", foreignText(t.qrb, true));
    addLine(entry, "Start", t.start);
    addLine(entry, "Stop", t.stop);
    addLine(entry, "Comments", t.comments);
    addLine(entry, "Points", pointChanges(before, after, notes));
    addLine(entry, "Point attributes", attributeChanges(before, after));
    addLine(entry, "Metadata", metaDataChanges(before, after));
    if (before.lodMode != after.lodMode || before.chunkSizeLod != after.chunkSizeLod)
        addLine(entry, "Level of detail",
                std::string(after.lodMode == 1 ? "thinout" : "combine") + ", size " +
                    std::to_string(after.chunkSizeLod));
    if (!notes.placeholders.empty()) {
        ChangeList list;
        for (const std::string& name : notes.placeholders)
            list.add("examples, to be replaced, in", name);
        addLine(entry, "Placeholders", list.text());
    }
    for (const std::string& line : notes.lines)
        entry += foreignText(line) + "\n";
    for (const std::string& message : notes.messages)
        addLine(entry, "Message", message);
    return entry;
}

void signEntry(std::string& entry, const Signer& signer) {
    const std::string signature = makeSignature(signer, asSigned(entry));
    entry += signatureStart.substr(1);
    entry += signature + "\n";
}

bool verifyEntry(std::string_view entry, const Signer& signer) {
    const std::size_t at = entry.rfind(signatureStart);
    if (at == std::string_view::npos)
        return false;
    std::string_view signature = entry.substr(at + signatureStart.size());
    const std::size_t end = signature.find_first_not_of("0123456789abcdefABCDEF");
    // What stands behind it is not signed.
    if (end != std::string_view::npos &&
        signature.find_first_not_of(" \t\r\n", end) != std::string_view::npos)
        return false;
    signature = signature.substr(0, end);
    if (signer.method == 0 && signer.key.empty())
        return !signature.empty();
    const SignedText text = asSigned(entry.substr(0, at));
    return checkSignature(signer, text, SignatureForm::Second, signature) ||
           checkSignature(signer, text, SignatureForm::First, signature);
}

std::string changelogBlob(std::string_view entry, const BlobRef& previous) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writeReferenceMember(writer, "previous", previous);
    writeMember(writer, "entry", entry);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

ChangelogLink changelogFromBlob(std::string_view blob) {
    const char* what = "The changelog";
    const rapidjson::Document document = parseJson(blob, what, ErrorCode::Damaged);
    const JsonObject object(document, what, ErrorCode::Damaged);
    return {object.text("entry"), readReferenceMember(object, "previous")};
}

}  // namespace tarvo::engine::session
