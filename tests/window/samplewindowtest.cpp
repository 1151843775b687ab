#include "tests/window/samplewindowtest.h"

#include "qrb/loader.h"

#include <QtTest>

void SampleWindowTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void SampleWindowTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void SampleWindowTest::init() {
    m_window = std::make_unique<SampleWindow>(m_sample->copy());
    m_window->window().resize(1400, 800);
    m_window->driver().showTab(m_tab);
}
