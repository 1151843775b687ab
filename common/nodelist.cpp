#include "common/nodelist.h"

#include <QStringList>
#include <stdexcept>
#include <vector>

namespace tarvo::common {

namespace {

[[noreturn]] void failWith(const QString& message, const QString& text) {
    throw std::runtime_error(message.arg(text).toStdString());
}

}  // namespace

std::set<std::uint32_t> parseNodeList(const QString& text) {
    std::set<std::uint32_t> nodes;
    for (const QString& part : text.trimmed().split(',', Qt::SkipEmptyParts)) {
        std::vector<std::uint32_t> numbers;
        for (const QString& piece : part.split('-', Qt::SkipEmptyParts)) {
            const QString number = piece.trimmed();
            if (number.isEmpty())
                continue;
            bool ok = false;
            numbers.push_back(number.toUInt(&ok, 10));
            if (!ok)
                failWith("Failed to parse: \"%0\"", piece);
        }
        const bool single = numbers.size() == 1 && !part.contains('-');
        const bool range = numbers.size() == 2 && part.contains('-');
        if (!single && !range)
            failWith("Invalid input: \"%0\"", part);
        const std::uint64_t last = numbers.back();
        for (std::uint64_t node = numbers.front(); node <= last; ++node) {
            nodes.insert(nodes.end(), static_cast<std::uint32_t>(node));
            if (nodes.size() > nodeListLimit)
                failWith("The list names too many nodes: \"%0\"", part);
        }
    }
    return nodes;
}

}  // namespace tarvo::common
