// Session: what it does with the transactions that are kept, and the changelog.
#include "engine/session/reach.h"
#include "engine/session/session.h"

#include <algorithm>
#include <set>

namespace tarvo::engine::session {

namespace {

constexpr std::size_t longestMessage = 1u << 20;  // bytes
constexpr std::size_t longestMessages = 16u << 20;

SignedText asSigned(const std::string& uuid, const std::string& name, const MetaItem& item,
                    std::string_view value) {
    return {"metadata item", {uuid, name, std::to_string(item.parent)}, value, name};
}

}  // namespace

void Session::discard(const std::vector<std::uint32_t>& ids) {
    requireNonePending();
    m_container.alone([&] { m_container.discard(ids); });
}

void Session::finalize() {
    requireNonePending();
    m_container.alone([this] {
        std::vector<std::uint32_t> ids = transactions();
        const std::uint32_t first = ids.front();
        const std::uint32_t now = m_container.current();
        std::erase_if(ids, [&](std::uint32_t id) { return id == first || id == now; });
        m_container.discard(ids);
    });
}

std::uint64_t Session::size(const std::vector<std::uint32_t>& given) {
    const std::set<std::uint32_t> ids(given.begin(), given.end());
    Reach reach(m_container);
    std::uint64_t bytes = 0;
    for (const std::uint32_t id : ids)
        bytes += m_container.root(id).size();
    for (const std::uint32_t id : transactions())
        if (!ids.contains(id))
            reach.add(stateFromRoot(m_container.root(id)));
    // No checksum covers the length that the container has of a blob, nor which blob it finds
    // under a number; that what is referred to is there as written vouches for both.
    reach.setOnBlob([&](const BlobRef& reference) {
        m_container.read(reference, "data of a transaction");
        bytes += m_container.blobSize(reference.blob);
    });
    for (const std::uint32_t id : ids)
        reach.add(stateFromRoot(m_container.root(id)));
    return bytes;
}

void Session::vacuum(const Progress& progress) {
    requireNonePending();
    Patience patience(m_container, progress);
    const Progress asked = patience.progress();
    const auto report = [&](int percent) { return !asked || asked(percent); };
    m_container.alone([&] {
        Reach reach(m_container);
        const std::vector<std::uint32_t> ids = transactions();
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (!report(static_cast<int>(i * 20 / ids.size())))
                throw Failure(ErrorCode::Cancelled, "The clean-up was cancelled.");
            reach.add(stateFromRoot(m_container.root(ids[i])));
        }
        m_container.giveBack([&](std::uint64_t blob) { return reach.contains(blob); },
                             reach.count(),
                             [&](int percent) { return report(20 + percent * 80 / 100); });
    });
    if (progress)
        progress(100);
}

std::string Session::changelog() {
    std::vector<std::string> entries;
    const std::shared_ptr<const State> now = state();
    reading(*now, [&] {
        for (BlobRef link = now->changelog; link;) {
            ChangelogLink one = changelogFromBlob(readText(link, "the changelog"));
            entries.push_back(std::move(one.entry));
            link = one.previous;
        }
    });
    std::string text;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        text += (text.empty() ? "" : "\n") + *entry;
    return text;
}

void Session::appendMessage(const std::string& message) {
    change();
    if (message.find_first_not_of(" \t\r\n") == std::string::npos)
        throw Failure(ErrorCode::Argument, "The message is empty.");
    if (message.size() > longestMessage)
        throw Failure(ErrorCode::Argument, "The message is too long.",
                      "A message has at most " + std::to_string(longestMessage) + " bytes.");
    std::size_t all = message.size();
    for (const std::string& each : m_notes.messages)
        all += each.size();
    if (all > longestMessages)
        throw Failure(ErrorCode::Argument, "The messages of this transaction are too long.",
                      "Together they have at most " + std::to_string(longestMessages) + " bytes.");
    m_notes.messages.push_back(message);
}

void Session::importChangelog(const std::string& text) {
    State& pending = change();
    std::vector<std::string> own;
    for (BlobRef link = pending.changelog; link;) {
        ChangelogLink one = changelogFromBlob(readText(link, "the changelog"));
        own.push_back(std::move(one.entry));
        link = one.previous;
    }
    BlobRef link = addJson(changelogBlob(text, {}), "The changelog");
    for (auto entry = own.rbegin(); entry != own.rend(); ++entry)
        link = addJson(changelogBlob(*entry, link), "The changelog");
    pending.changelog = link;
    m_notes.lines.push_back("Changelog: imported that of another database");
}

void Session::signMetaData(const std::string& name, const Signer& signer) {
    State& pending = change();
    const std::string value = metaData(name);
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
        makeSignature(signer, asSigned(m_identity.uuid, name, signedItem, value));
    signedItem.method = signer.method;
    item = std::move(signedItem);
}

bool Session::verifyMetaData(const std::string& name, const Signer& signer) {
    const std::string value = metaData(name);
    const std::shared_ptr<const State> now = state();
    const MetaItem& item = now->metaData.at(name);
    if (signer.method == 0 && signer.key.empty())
        return !item.signature.empty();
    const auto form = item.parent == 0 ? SignatureForm::First : SignatureForm::Second;
    return checkSignature(signer, asSigned(m_identity.uuid, name, item, value), form,
                          item.signature) &&
           item.method == signer.method && item.parent < now->transaction.id;
}

}  // namespace tarvo::engine::session
