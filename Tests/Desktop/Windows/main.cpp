// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Desktop/Support/GuiTestRun.h"
#include "Tests/Desktop/Windows/WindowDesktop.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    using velmora::test::VirtualDesktop;
    using velmora::test::WindowDesktop;
    VirtualDesktop desktop(
        {.width = WindowDesktop::width, .height = WindowDesktop::height, .serverArguments = {}});
    desktop.enter();
    WindowDesktop::set(&desktop);
    qputenv("QSG_RENDER_LOOP", "basic");
    return velmora::test::runGuiTests(argc, argv);
}
