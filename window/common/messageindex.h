// Finds the patterns that a text may have been made by.
#pragma once

#include "window/common/messagepatterns.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace tarvo::window {

class MessageIndex {
public:
    struct Pattern {
        const MessagePattern* source;
        QStringList pieces;     // the literals around what is put in, one more than that
        qsizetype letters = 0;  // in all pieces
    };
    struct Match {
        const Pattern* pattern;
        QList<QStringView> captures;  // of the text
    };

    explicit MessageIndex(std::span<const MessagePattern> patterns);

    // The patterns that match the whole text, those with the longest literals first. Takes what was
    // compared, in characters, from work, and finds nothing more when that is used up.
    QList<Match> matches(QStringView text, qint64& work) const;

private:
    QList<Pattern> m_patterns;
    QHash<QString, QList<qsizetype>> m_byBegin, m_byEnd;  // by a few letters
    QList<qsizetype> m_others;
};

}  // namespace tarvo::window
