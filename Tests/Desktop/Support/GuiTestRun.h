// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QGuiApplication>

#include "Velmora/Presentation/ViewEngine.h"

namespace velmora::test {

/// Runs all tests with our windows at hand, which do not end the run when the last one closes.
inline int runGuiTests(int& argc, char** argv) {
    ViewEngine::registerPresentation();
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}

}  // namespace velmora::test
