// The frame of tests of plugins, whose scripts a real Python runs: each begins with a fresh window
// on the sample and no plugins.
#pragma once

#include "tests/window/pluginwindow.h"
#include "tests/window/sampletest.h"

#include <QByteArray>
#include <memory>

class PluginWindowTest : public SampleTest {
    Q_OBJECT

protected slots:
    void init();
    void cleanup() { m_window.reset(); }

protected:
    // Of the manifest of a plugin that changes the database.
    static constexpr const char* writes = R"(, "writes": true)";

    static QByteArray contentOf(const QString& fileName);

    std::unique_ptr<PluginWindow> m_window;
    QString m_file;
};
