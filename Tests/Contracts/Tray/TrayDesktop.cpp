// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Tray/TrayDesktop.h"

#include <gtest/gtest.h>

namespace velmora::testing {
namespace {

std::unique_ptr<TrayDesktop> desktop;

class TrayEnvironment final : public ::testing::Environment {
  public:
    void SetUp() override { desktop = std::make_unique<TrayDesktop>(); }
    // Not at the end of the process, where the toolkit's own parts go in any order.
    void TearDown() override { desktop.reset(); }
};

const ::testing::Environment* const environment =
    ::testing::AddGlobalTestEnvironment(new TrayEnvironment);

}  // namespace

TrayDesktop::TrayDesktop() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    qputenv("DISPLAY", server_.display().c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_QPA_PLATFORMTHEME", "none");
    application_ = std::make_unique<QApplication>(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
}

TrayDesktop::~TrayDesktop() = default;

TrayDesktop& TrayDesktop::instance() {
    return *desktop;
}

}  // namespace velmora::testing
