#include "plugin/messages.h"

#include "core/jsonvalues.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tarvo::plugin {

namespace {

using Json = rapidjson::Value;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

// The most that results may be in all: a window shows them.
constexpr std::size_t resultLimit = std::size_t{256} << 20;

std::string line(const rapidjson::StringBuffer& buffer) {
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

void member(Writer& writer, const char* name, const std::string& text) {
    writer.Key(name);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

std::string textOf(const Json& object, const char* name) {
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() || !found->value.IsString()
               ? std::string()
               : core::jsonStringValue(found->value);
}

double numberOf(const Json& object, const char* name) {
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() || !found->value.IsNumber() ? 0 : found->value.GetDouble();
}

// RFC 4648, section 4; nothing for other texts.
std::optional<std::string> fromBase64(std::string_view text) {
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    while (text.ends_with('='))
        text.remove_suffix(1);
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = digits.find(c);
        if (digit == std::string_view::npos)
            return std::nullopt;
        bits = bits << 6 | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 0xFF);
        }
    }
    return bytes;
}

std::optional<Table> tableOf(const Json& message) {
    const auto columns = message.FindMember("columns");
    const auto rows = message.FindMember("rows");
    if (columns == message.MemberEnd() || !columns->value.IsArray() ||
        rows == message.MemberEnd() || !rows->value.IsArray())
        return std::nullopt;
    Table table;
    for (const Json& column : columns->value.GetArray()) {
        if (!column.IsObject())
            return std::nullopt;
        table.columns.push_back({textOf(column, "title"), textOf(column, "align") == "right"});
    }
    for (const Json& row : rows->value.GetArray()) {
        if (!row.IsArray() || row.Size() != table.columns.size())
            return std::nullopt;
        std::vector<std::string> cells;
        for (const Json& cell : row.GetArray())
            cells.push_back(cell.IsString() ? core::jsonStringValue(cell) : std::string());
        table.rows.push_back(std::move(cells));
    }
    return table;
}

// What a message of a result's kind holds; nothing where it is none or is off.
std::optional<Result> resultOf(const std::string& type, const Json& message) {
    Result result;
    result.title = textOf(message, "title");
    result.text = textOf(message, "text");
    if (type == "text")
        return result;
    if (type == "html") {
        result.kind = Result::Kind::HTML;
        return result;
    }
    if (type == "file") {
        result.kind = Result::Kind::FILE;
        return result;
    }
    if (type == "picture") {
        result.kind = Result::Kind::PICTURE;
        std::optional<std::string> bytes = fromBase64(textOf(message, "png"));
        if (!bytes)
            return std::nullopt;
        result.text = std::move(*bytes);
        return result;
    }
    if (type == "table") {
        result.kind = Result::Kind::TABLE;
        std::optional<Table> table = tableOf(message);
        if (!table)
            return std::nullopt;
        result.table = std::move(*table);
        return result;
    }
    return std::nullopt;
}

std::optional<Outcome> outcomeOf(const std::string& type, const Json& message) {
    Outcome outcome;
    outcome.text = textOf(message, "text");
    outcome.details = textOf(message, "details");
    if (type == "done") {
        outcome.end = Outcome::End::DONE;
        outcome.transaction = static_cast<std::uint32_t>(
            std::clamp(numberOf(message, "transaction"), 0.0, 4294967295.0));
        return outcome;
    }
    if (type == "failed")
        return outcome;
    if (type == "cancelled") {
        outcome.end = Outcome::End::CANCELLED;
        return outcome;
    }
    return std::nullopt;
}

}  // namespace

std::string runMessage(const Request& request, const std::string& script) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    const Manifest& manifest = request.package->manifest;
    writer.StartObject();
    member(writer, "type", "run");
    member(writer, "script", script);
    member(writer, "name", manifest.name);
    member(writer, "title", manifest.title);
    member(writer, "version", manifest.version);
    member(writer, "library", request.library);
    member(writer, "database", request.database);
    member(writer, "agent", request.agent);
    writer.Key("writes");
    writer.Bool(manifest.writes);
    writer.Key("parameters");
    writer.RawValue(request.arguments.data(), request.arguments.size(), rapidjson::kObjectType);
    writer.EndObject();
    return line(buffer);
}

std::string cancelMessage() {
    return "{\"type\":\"cancel\"}\n";
}

void Messages::take(std::string& text, std::string& printed) {
    std::size_t begin = 0;
    for (std::size_t end; (end = text.find('\n', std::max(begin, m_searched))) != std::string::npos;
         begin = end + 1) {
        const std::string_view whole(text.data() + begin, end + 1 - begin);
        if (!m_failure && !takeLine(whole))
            printed += whole;
    }
    text.erase(0, begin);
    m_searched = text.size();
    if (!m_failure && m_heard + text.size() > resultLimit)
        m_failure =
            "The plugin's results are larger than " + std::to_string(resultLimit >> 20) + " MiB.";
    if (m_failure)
        m_searched = 0, text.clear();
}

bool Messages::takeLine(std::string_view line) {
    rapidjson::Document message;
    message.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(
        line.data(), line.size());
    if (message.HasParseError() || !message.IsObject())
        return false;
    if (m_outcome)
        return true;
    const std::string type = textOf(message, "type");
    if (type == "progress") {
        m_listener.progressed(std::clamp(numberOf(message, "value"), 0.0, 1.0),
                              textOf(message, "text"));
        return true;
    }
    if (std::optional<Result> result = resultOf(type, message)) {
        m_heard += line.size();
        m_listener.resulted(std::move(*result));
        return true;
    }
    m_outcome = outcomeOf(type, message);
    return m_outcome.has_value();
}

}  // namespace tarvo::plugin
