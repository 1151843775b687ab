#include "window/common/recentfiles.h"

#include "window/common/programsettings.h"

namespace tarvo::window {

QStringList RecentFiles::list() {
    return ProgramSettings().value("Recent").toStringList();
}

void RecentFiles::add(const QString& fileName) {
    ProgramSettings settings;
    settings.setValue("Recent",
                      movedToFront(settings.value("Recent").toStringList(), fileName, maximum));
}

}  // namespace tarvo::window
