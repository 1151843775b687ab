// The database files opened last, kept in the program settings.
#pragma once

#include <QStringList>

namespace tarvo::window {

class RecentFiles {
public:
    static constexpr int maximum = 10;

    // Newest first.
    static QStringList list();
    // Puts the name in front; an equal one is moved there.
    static void add(const QString& fileName);
};

}  // namespace tarvo::window
