#include "window/common/savedfilters.h"

#include "window/common/programsettings.h"

namespace tarvo::window {

namespace {

const char* const savedKey = "SavedFilters";

// Expressions hold any sign, so they stand behind the names in a list of pairs.
void writeAll(const QMap<QString, QString>& filters) {
    QStringList pairs;
    for (auto filter = filters.cbegin(); filter != filters.cend(); ++filter)
        pairs << filter.key() << filter.value();
    ProgramSettings().setValue(savedKey, pairs);
}

}  // namespace

QMap<QString, QString> SavedFilters::all() {
    QMap<QString, QString> filters;
    const QStringList pairs = ProgramSettings().value(savedKey).toStringList();
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2)
        filters[pairs[i]] = pairs[i + 1];
    return filters;
}

void SavedFilters::save(const QString& name, const QString& expression) {
    auto filters = all();
    filters[name] = expression;
    writeAll(filters);
}

void SavedFilters::remove(const QString& name) {
    auto filters = all();
    filters.remove(name);
    writeAll(filters);
}

}  // namespace tarvo::window
