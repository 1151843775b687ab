// The frame of tests of a tab: each begins with a fresh window on the sample, wide enough for its
// columns, that shows this tab.
#pragma once

#include "tests/window/sampletest.h"

#include <QByteArray>
#include <memory>

class SampleWindowTest : public SampleTest {
    Q_OBJECT

protected:
    explicit SampleWindowTest(const QByteArray& tab) : m_tab(tab) {}

protected slots:
    void init();
    void cleanup() { m_window.reset(); }

protected:
    std::unique_ptr<SampleWindow> m_window;

private:
    QByteArray m_tab;
};
