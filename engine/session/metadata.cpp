#include "engine/session/metadata.h"

#include "catalogue/catalogue.h"
#include "engine/base/json.h"
#include "engine/base/utf8.h"
#include "engine/session/session.h"

namespace tarvo::engine::session {

namespace {

SignedText asSigned(const std::string& uuid, const std::string& name, const MetaItem& item,
                    std::string_view value) {
    return {"metadata item", {uuid, name, std::to_string(item.parent)}, value, name};
}

[[noreturn]] void throwNone(const std::string& name) {
    throw Failure(ErrorCode::NotFound, "The database has no metadata item \"" + name + "\".");
}

// The entry of an item whose neutral value nobody knows; null: none.
const catalogue::MetaDataEntry* entryToFillIn(const std::string& name) {
    const catalogue::MetaDataEntry* entry = catalogue::findMetaData(name);
    return entry && entry->neutral.empty() ? entry : nullptr;
}

}  // namespace

void checkMetaDataName(const std::string& name) {
    if (!isMetaDataName(name))
        throw Failure(ErrorCode::Argument,
                      "The name of a metadata item must have 1 to 255 characters.");
    requireUtf8("The name of a metadata item", name);
}

bool isPlaceholder(const std::string& name, const std::string& value) {
    const catalogue::MetaDataEntry* entry = entryToFillIn(name);
    if (!entry)
        return false;
    try {
        return parseJson(value, "A metadata item") == parseJson(entry->example, "An example");
    } catch (const Failure&) {  // no JSON
        return false;
    }
}

std::string MetaData::get(const std::string& name) {
    const std::shared_ptr<const State> now = m_session.state();
    const auto found = now->metaData.find(name);
    if (found == now->metaData.end())
        throwNone(name);
    return m_session.reading(
        *now, [&] { return m_session.blobs().readText(found->second.value, "a metadata item"); });
}

void MetaData::set(const std::string& name, const std::string& value) {
    State& pending = m_session.change();
    checkMetaDataName(name);
    requireUtf8("The value of the metadata item \"" + name + "\"", value);
    pending.metaData[name] = {m_session.blobs().addText(value), 0, 0, {}};
}

void MetaData::remove(const std::string& name) {
    if (m_session.change().metaData.erase(name) == 0)
        throwNone(name);
}

void MetaData::sign(const std::string& name, const Signer& signer) {
    State& pending = m_session.change();
    const std::string value = get(name);
    MetaItem& item = pending.metaData.at(name);
    if (signer.method == 0) {
        item.method = 0;
        item.parent = 0;
        item.signature.clear();
        return;
    }
    MetaItem signedItem = item;
    signedItem.parent = pending.parent;
    signedItem.signature =
        makeSignature(signer, asSigned(m_session.identity().uuid, name, signedItem, value));
    signedItem.method = signer.method;
    item = std::move(signedItem);
}

bool MetaData::verify(const std::string& name, const Signer& signer) {
    const std::string value = get(name);
    const std::shared_ptr<const State> now = m_session.state();
    const MetaItem& item = now->metaData.at(name);
    if (signer.method == 0 && signer.key.empty())
        return !item.signature.empty();
    const auto form = item.parent == 0 ? SignatureForm::First : SignatureForm::Second;
    return checkSignature(signer, asSigned(m_session.identity().uuid, name, item, value), form,
                          item.signature) &&
           item.method == signer.method && item.parent < now->transaction.id;
}

std::vector<std::string> MetaData::placeholders(const State& state, const State& but) {
    std::vector<std::string> names;
    m_session.reading(state, [&] {
        for (const auto& [name, item] : state.metaData) {
            const auto other = but.metaData.find(name);
            const bool isOld = other != but.metaData.end() && other->second.value == item.value;
            if (!isOld && entryToFillIn(name) &&
                isPlaceholder(name, m_session.blobs().readText(item.value, "a metadata item")))
                names.push_back(name);
        }
    });
    return names;
}

}  // namespace tarvo::engine::session
