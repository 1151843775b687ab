#include "engine/report/report.h"

#include "engine/base/json.h"

#include <cstdio>

namespace tarvo::engine::report {

namespace {

// What both forms tell, gathered once.
struct Facts {
    std::shared_ptr<const session::State> state;
    std::vector<session::TransactionRecord> transactions;
    index::Node root;
};

Facts gatherFacts(session::Session& session) {
    Facts facts;
    facts.state = session.state();
    for (const std::uint32_t id : session.transactions())
        facts.transactions.push_back(session.details(id));
    facts.root = session.rootNode(*facts.state);
    return facts;
}

std::string jsonReport(session::Session& session, const Facts& facts) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    const session::State& state = *facts.state;
    writer.StartObject();
    writer.Key("database");
    writer.StartObject();
    writeMember(writer, "uuid", session.identity().uuid);
    writeMember(writer, "file", session.container().fileName());
    writeMember(writer, "size", session.container().size());
    writeMember(writer, "creator", session.identity().creator);
    writeMember(writer, "transaction", std::uint64_t(state.transaction.id));
    writer.EndObject();
    writeMember(writer, "points", state.pointCount);
    writer.Key("settings");
    const std::string settings = toJson(session.identity().settings);
    writer.RawValue(settings.data(), settings.size(), rapidjson::kObjectType);
    writer.Key("level_of_detail");
    writer.StartObject();
    writeMember(writer, "mode", std::uint64_t(state.lodMode));
    writeMember(writer, "size", std::uint64_t(state.chunkSizeLod));
    writer.EndObject();
    writer.Key("transactions");
    writer.StartArray();
    for (const session::TransactionRecord& transaction : facts.transactions) {
        writer.StartObject();
        writeMember(writer, "id", std::uint64_t(transaction.id));
        writeMember(writer, "title", transaction.title);
        writeMember(writer, "agent", transaction.agent);
        writeMember(writer, "start", transaction.start);
        writeMember(writer, "stop", transaction.stop);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("attributes");
    writer.StartArray();
    for (const schema::Attribute& attribute : state.attributes.all()) {
        writer.StartObject();
        writeMember(writer, "name", attribute.record.name);
        writeMember(writer, "title", attribute.record.title);
        writeMember(writer, "unit", attribute.record.unitSymbol);
        for (const bool minimum : {true, false}) {
            writer.Key(minimum ? "minimum" : "maximum");
            writer.StartArray();
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                const schema::ElementStatistics s = index::statisticsOf(facts.root, attribute, e);
                if (state.pointCount > 0 && s.hasValid)
                    writer.Double(attribute.grid.value(minimum ? s.minimum : s.maximum));
                else
                    writer.Null();
            }
            writer.EndArray();
        }
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("metadata");
    writer.StartArray();
    for (const auto& [name, value] : state.metaData)
        writeText(writer, name);
    writer.EndArray();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

std::string numberText(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.12g", value);
    return text;
}

std::string textReport(session::Session& session, const Facts& facts) {
    const session::State& state = *facts.state;
    const session::CreateSettings& settings = session.identity().settings;
    std::string out = "DATABASE\n";
    const auto line = [&out](const std::string& name, const std::string& value) {
        out +=
            "  " + name + std::string(name.size() < 20 ? 20 - name.size() : 1, ' ') + value + "\n";
    };
    line("UUID", session.identity().uuid);
    line("File", session.container().fileName());
    line("Size", std::to_string(session.container().size()) + " bytes");
    line("Creator", session.identity().creator);
    line("Points", std::to_string(state.pointCount));
    line("Primary attribute", state.primary().record.name);
    line("Chunk size", settings.chunkMode == 1
                           ? "up to " + std::to_string(settings.chunkSize) + " points"
                           : "edge length 2^" + std::to_string(settings.chunkSize) + " steps");
    line("Compression level", std::to_string(settings.compressionLevel) + " %");
    out += "\nTRANSACTIONS\n";
    for (const session::TransactionRecord& t : facts.transactions)
        line("#" + std::to_string(t.id) + (t.id == state.transaction.id ? " (current)" : ""),
             t.stop + "  " + t.title + "  [" + t.agent + "]");
    out += "\nPOINT ATTRIBUTES\n";
    for (const schema::Attribute& attribute : state.attributes.all())
        for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
            const schema::ElementStatistics s = index::statisticsOf(facts.root, attribute, e);
            std::string name = attribute.record.name;
            if (attribute.record.length > 1)
                name += "[" + std::to_string(e) + "]";
            line(name, state.pointCount > 0 && s.hasValid
                           ? numberText(attribute.grid.value(s.minimum)) + " to " +
                                 numberText(attribute.grid.value(s.maximum)) + " " +
                                 attribute.record.unitSymbol
                           : "no values");
        }
    out += "\nMETADATA\n";
    for (const auto& [name, value] : state.metaData)
        line(name, std::to_string(value.value.length) + " bytes");
    return out;
}

}  // namespace

std::string inspect(session::Session& session, std::uint8_t format) {
    switch (format) {
        case 1:
            return textReport(session, gatherFacts(session));
        case 2:
            return jsonReport(session, gatherFacts(session));
        case 3:
        case 4:
            throw Failure(ErrorCode::NotAvailable,
                          "The report format " + std::to_string(format) + " is not available yet.",
                          "The formats 1 (plain text) and 2 (JSON) are.");
        default:
            throw Failure(ErrorCode::Argument, "The report format " + std::to_string(format) +
                                                   " is unknown: 1 to 4 are possible.");
    }
}

}  // namespace tarvo::engine::report
