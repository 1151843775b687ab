// The frame of the window's test programs: names, resources and style of the program, its settings
// and run-time files in a temporary folder.
#pragma once

#include <functional>
#include <memory>

namespace tarvo::window {
class MainWindow;
}
class QObject;

// Runs the test objects that make() returns; makes them after the application object.
int runGuiTest(int argc, char* argv[], const std::function<QObject*()>& make);

#define GUI_TEST_MAIN(TestClass)                                     \
    int main(int argc, char* argv[]) {                               \
        return runGuiTest(argc, argv, [] { return new TestClass; }); \
    }

// A window as after the first start, shown; to be made for each case anew. From now on warnings of
// connections that are wrong fail the case.
std::unique_ptr<tarvo::window::MainWindow> showFreshWindow();
