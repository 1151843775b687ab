#include "core/itemobject.h"

namespace tarvo::core {

rapidjson::Document readItem(const qrb::pointcloud::MetaData& metaData, const std::string& name) {
    rapidjson::Document item;
    if (metaData.exists(name)) {
        const std::string text = metaData.get(name);
        item.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(
            text.data(), text.size());
    }
    if (item.HasParseError() || !item.IsObject()) {
        item.SetObject();
    }
    return item;
}

std::string textMember(const rapidjson::Value& object, const char* name) {
    const auto found = object.FindMember(name);
    return found != object.MemberEnd() && found->value.IsString()
               ? std::string(found->value.GetString(), found->value.GetStringLength())
               : std::string();
}

bool isSigned(const qrb::pointcloud::MetaData& metaData, const std::string& name) {
    return metaData.exists(name) && metaData.verifySignature(name, 0, {});
}

}  // namespace tarvo::core
