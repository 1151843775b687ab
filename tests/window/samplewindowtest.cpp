#include "tests/window/samplewindowtest.h"

void SampleWindowTest::init() {
    m_window = std::make_unique<SampleWindow>(m_sample->copy());
    m_window->window().resize(1400, 800);
    m_window->driver().showTab(m_tab);
}
