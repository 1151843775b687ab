// The word of a filter expression at a place, for completing it. Only texts; no library.
#pragma once

#include <QString>
#include <optional>

namespace tarvo::window {

struct FilterWord {
    qsizetype begin = 0;  // what is replaced when it is completed
    qsizetype end = 0;
    QString text;           // of it, up to the cursor; may be empty behind a comparison
    QString compared;       // the attribute, without index, that it is compared with; empty: none
    bool isQuoted = false;  // begins with a quotation mark, which text leaves out
};

// The name that stands at the cursor, or the value behind a comparison; nothing where neither can
// stand. Looks at a bounded part of the text.
std::optional<FilterWord> filterWordAt(const QString& filter, qsizetype cursor);

}  // namespace tarvo::window
