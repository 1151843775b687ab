#include "engine/session/changelog.h"

#include "engine/base/utf8.h"
#include "engine/session/session.h"

namespace tarvo::engine::session {

namespace {

constexpr std::size_t longestMessage = 1u << 20;  // bytes
constexpr std::size_t longestMessages = 16u << 20;

}  // namespace

std::vector<std::string> Changelog::entriesOf(const State& state) {
    std::vector<std::string> entries;
    for (BlobRef link = state.changelog; link;) {
        ChangelogLink one = changelogFromBlob(m_session.blobs().readText(link, "the changelog"));
        entries.push_back(std::move(one.entry));
        link = one.previous;
    }
    return entries;
}

std::string Changelog::text() {
    const std::shared_ptr<const State> now = m_session.state();
    const std::vector<std::string> entries =
        m_session.reading(*now, [&] { return entriesOf(*now); });
    std::string text;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
        text += (text.empty() ? "" : "\n") + *entry;
    return text;
}

void Changelog::append(const std::string& message) {
    m_session.change();
    if (message.find_first_not_of(" \t\r\n") == std::string::npos)
        throw Failure(ErrorCode::Argument, "The message is empty.");
    requireUtf8("The message", message);
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

void Changelog::import(const std::string& text) {
    State& pending = m_session.change();
    const std::vector<std::string> own = entriesOf(pending);
    const auto add = [&](const std::string& entry, const BlobRef& previous) {
        return m_session.blobs().addJson(changelogBlob(entry, previous), "The changelog");
    };
    // Earlier releases took any bytes.
    BlobRef link = add(validUtf8(text), {});
    for (auto entry = own.rbegin(); entry != own.rend(); ++entry)
        link = add(*entry, link);
    pending.changelog = link;
    m_notes.lines.push_back("Changelog: imported that of another database");
}

}  // namespace tarvo::engine::session
