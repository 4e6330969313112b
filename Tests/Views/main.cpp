// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QLocale>

#include "Velmora/Presentation/ViewEngine.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("FONTCONFIG_FILE", VELMORA_VIEW_TESTS "/fonts.conf");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    testing::InitGoogleTest(&argc, argv);
    QLocale::setDefault(QLocale::c());
    velmora::ViewEngine::registerPresentation();
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
