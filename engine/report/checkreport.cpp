#include "engine/base/json.h"
#include "engine/base/utf8.h"
#include "engine/report/check.h"
#include "engine/report/text.h"

namespace tarvo::engine::report {

namespace {

const char* kindText(Fault::Kind kind) {
    switch (kind) {
        case Fault::Kind::Root:
            return "root";
        case Fault::Kind::AttributeTable:
            return "attribute table";
        case Fault::Kind::MetaDataItem:
            return "metadata item";
        case Fault::Kind::Changelog:
            return "changelog";
        case Fault::Kind::Index:
            return "index";
        case Fault::Kind::Block:
            return "block";
        case Fault::Kind::Container:
            return "container";
    }
    return "";
}

void writeFault(JsonWriter& writer, const Fault& fault) {
    writer.StartObject();
    if (fault.transaction != 0)
        writeMember(writer, "transaction", std::uint64_t(fault.transaction));
    writeMember(writer, "kind", std::string_view(kindText(fault.kind)));
    if (!fault.name.empty())
        writeMember(writer, fault.kind == Fault::Kind::MetaDataItem ? "item" : "attribute",
                    validUtf8(fault.name));
    if (fault.element)
        writeMember(writer, "element", std::uint64_t(*fault.element));
    if (fault.node != 0)
        writeMember(writer, "node", std::uint64_t(fault.node));
    writeMember(writer, "text", validUtf8(fault.text));
    writeMember(writer, "details", validUtf8(fault.details));
    writer.EndObject();
}

}  // namespace

std::string checkReport(const Findings& findings) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writeMember(writer, "fault_count", findings.faultCount);
    writer.Key("faults");
    writer.StartArray();
    for (const Fault& fault : findings.faults)
        writeFault(writer, fault);
    writer.EndArray();
    writeMember(writer, "transactions", findings.transactions);
    writeMember(writer, "left_out", findings.leftOut);
    writeMember(writer, "blobs", findings.blobs);
    writeMember(writer, "points", findings.points);
    writeMember(writer, "bytes", findings.bytes);
    if (findings.unreached)
        writeMember(writer, "unreached_blobs", *findings.unreached);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace tarvo::engine::report
