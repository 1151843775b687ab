#include "tests/window/pluginwindowtest.h"

#include <QFile>

void PluginWindowTest::init() {
    m_file = m_sample->copy();
    m_window = std::make_unique<PluginWindow>(m_file);
}

QByteArray PluginWindowTest::contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}
