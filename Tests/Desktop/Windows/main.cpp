// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QGuiApplication>

#include "Tests/Desktop/Windows/WindowDesktop.h"
#include "Velmora/Presentation/ViewEngine.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    using velmora::test::VirtualDesktop;
    using velmora::test::WindowDesktop;
    VirtualDesktop desktop(
        {.width = WindowDesktop::width, .height = WindowDesktop::height, .serverArguments = {}});
    desktop.enter();
    WindowDesktop::set(&desktop);
    qputenv("QSG_RENDER_LOOP", "basic");
    velmora::ViewEngine::registerPresentation();
    int result = 0;
    {
        const QGuiApplication application(argc, argv);
        QGuiApplication::setQuitOnLastWindowClosed(false);
        result = RUN_ALL_TESTS();
    }
    return result;
}
