#include "window/widgets/splittermemory.h"

#include "window/common/programsettings.h"

#include <QSplitter>
#include <QTimer>

namespace tarvo::window {

namespace {

const QString splitters = "Splitters/";
constexpr int restFor = 200;  // milliseconds; a handle moves pixel by pixel

}  // namespace

void rememberSplitter(QSplitter* splitter) {
    splitter->restoreState(
        ProgramSettings().value(splitters + splitter->objectName()).toByteArray());
    auto* rest = new QTimer(splitter);
    rest->setSingleShot(true);
    rest->setInterval(restFor);
    QObject::connect(splitter, &QSplitter::splitterMoved, rest, qOverload<>(&QTimer::start));
    QObject::connect(rest, &QTimer::timeout, splitter, [splitter] {
        ProgramSettings().setValue(splitters + splitter->objectName(), splitter->saveState());
    });
}

}  // namespace tarvo::window
