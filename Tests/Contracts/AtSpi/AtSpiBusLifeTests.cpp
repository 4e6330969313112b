// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiPermission.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

namespace velmora::test {
namespace {

void setEnabled(VirtualDesktop& desktop, bool enabled) {
    desktop.run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                 "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status",
                 "string:IsEnabled",
                 std::string("variant:boolean:") + (enabled ? "true" : "false")});
}

TEST(AtSpiBusLife, followsTheSwitchAndTurnsItOn) {
    AtSpiBench bench;
    const auto service = std::make_shared<AtSpiService>();
    AtSpiPermission permission(service);
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return permission.accessibilityTrusted(); }));
    setEnabled(bench.desktop(), false);
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return !permission.accessibilityTrusted(); }));
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return !bench.isTrusted(); }));
    EXPECT_EQ(bench.system().elementAtPosition({100, 100}), nullptr);
    EXPECT_EQ(bench.system().focusedElement(), nullptr);
    permission.promptForAccessibility();
    EXPECT_TRUE(bench.desktop().waitUntil([&] { return permission.accessibilityTrusted(); }));
    EXPECT_TRUE(bench.desktop().waitUntil([&] { return bench.isTrusted(); }));
}

TEST(AtSpiBusLife, isNotGrantedWithoutABus) {
    VirtualDesktop desktop({.windowManager = false, .accessibility = false, .serverArguments = {}});
    desktop.enter();
    setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/at/all", 1);
    AtSpiPermission permission(std::make_shared<AtSpiService>());
    EXPECT_FALSE(permission.accessibilityTrusted());
    EXPECT_FALSE(permission.promptForAccessibility());
}

TEST(AtSpiBusLife, givesTheWindowOfAProgramThatIsNotOnTheBus) {
    AtSpiBench bench;
    const auto file = bench.desktop().writeFile("sample.txt", contractText);
    bench.start({"mousepad", file.string()}, {{"NO_AT_BRIDGE", "1"}});
    const Rect client = bench.window().client;
    const auto element = bench.system().elementAtPosition({client.midX(), client.midY()});
    ASSERT_NE(element, nullptr);
    ASSERT_TRUE(element->position() && element->size());
    EXPECT_EQ(*element->position(), (Point{client.x, client.y}));
    EXPECT_EQ(*element->size(), client.size());
    EXPECT_EQ(element->parent(), nullptr);
    EXPECT_EQ(element->title(), std::nullopt);
    EXPECT_EQ(element->value(), std::nullopt);
    // Nothing over the bare desktop.
    EXPECT_EQ(bench.system().elementAtPosition({1590, 990}), nullptr);
}

}  // namespace
}  // namespace velmora::test
