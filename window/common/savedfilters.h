// Filter expressions that the user gave a name; kept in the program settings, for all databases.
#pragma once

#include <QMap>
#include <QString>

namespace tarvo::window {

class SavedFilters {
public:
    static constexpr int longestName = 60;

    // Expressions by name.
    static QMap<QString, QString> all();
    // In place of one of the same name.
    static void save(const QString& name, const QString& expression);
    static void remove(const QString& name);
};

}  // namespace tarvo::window
