#include "tests/window/sampletest.h"

#include "qrb/loader.h"

#include <QtTest>

void SampleTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void SampleTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}
