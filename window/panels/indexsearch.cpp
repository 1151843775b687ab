#include "window/panels/indexsearch.h"

#include <QRegularExpression>

namespace tarvo::window {

using qrb::pointcloud::IndexNode;

bool isIndexCommand(const QString& text) {
    for (const char* command :
         {"find largest leaf", "find largest node", "find fullest leaf", "find fullest node"}) {
        if (text.trimmed().compare(QLatin1String(command), Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

bool isNodeList(const QString& text) {
    static const QRegularExpression list(R"(\A[\d\s,\-]*\d[\d\s,\-]*\z)");
    return list.match(text).hasMatch();
}

std::set<std::uint32_t> leavesOf(const IndexNode& root) {
    std::set<std::uint32_t> leaves;
    if (root.children.empty() && root.id != 0)
        leaves.insert(root.id);
    for (const IndexNode& child : root.children)
        leaves.merge(leavesOf(child));
    return leaves;
}

}  // namespace tarvo::window
