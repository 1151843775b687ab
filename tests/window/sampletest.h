// The frame of tests on the sample: it is made once, and each test opens a copy when it wants to.
#pragma once

#include "tests/window/samplewindow.h"

#include <QObject>
#include <memory>

class SampleTest : public QObject {
    Q_OBJECT

protected slots:
    void initTestCase();
    void cleanupTestCase();

protected:
    std::unique_ptr<SampleDatabase> m_sample;
};
