// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>

#include "Tests/Contracts/AtSpi/AtSpiBench.h"
#include "Tests/Support/VirtualDesktop/AccessibilityBus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiPermission.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

namespace velmora::test {
namespace {

void startSample(AtSpiBench& bench, const ChildProcess::Environment& extra = {}) {
    bench.start({std::string(VELMORA_BUILD_FOLDER) + "/velmora_hostile_program", "honest"}, extra);
    ASSERT_NE(bench.elementShowing("词典"), nullptr);
}

TEST(AtSpiBusLife, readsAgainAfterTheAccessibilityBusDied) {
    AtSpiBench bench;
    startSample(bench);
    const auto element = bench.findNow("词典");
    ASSERT_NE(element, nullptr);
    ASSERT_TRUE(element->boundsForRange({0, 1}).has_value());

    std::atomic<int> connections = 0;
    const auto service = std::make_shared<AtSpiService>();
    service->observeConnections([&connections] { ++connections; });
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return connections == 1; }));

    AccessibilityBus bus(bench.desktop());
    const std::string before = bus.launcherName();
    ASSERT_FALSE(before.empty());
    // As a crash would.
    ::kill(bus.daemon(bus.address()), SIGKILL);
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return !bench.isTrusted(); }));
    EXPECT_EQ(element->boundsForRange({0, 1}), std::nullopt);
    EXPECT_EQ(element->title(), std::nullopt);
    EXPECT_EQ(element->parent(), nullptr);
    EXPECT_EQ(bench.system().elementAtPosition({700, 400}), nullptr);
    EXPECT_EQ(bench.system().focusedElement(), nullptr);
    bench.desktop().stop(bench.program());

    // The launcher ends with its bus; what it is still told in between goes with it.
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return bus.launcherName() != before; }));
    bus.setEnabled(true);
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return bench.isTrusted(); }));
    EXPECT_TRUE(bench.desktop().waitUntil([&] { return connections > 1; }));
    startSample(bench);
}

TEST(AtSpiBusLife, readsAgainAfterTheSessionBusDied) {
    AtSpiBench bench;
    VirtualDesktop& desktop = bench.desktop();
    // The next daemon at this place is another one, so only the place may be in the address.
    const std::string address = "unix:path=" + (desktop.folder() / "run/bus").string();
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    const auto service = std::make_shared<AtSpiService>();
    AtSpiPermission permission(service);
    ASSERT_TRUE(desktop.waitUntil([&] { return permission.accessibilityTrusted(); }));

    ::kill(AccessibilityBus(desktop).daemon(address), SIGKILL);
    ASSERT_TRUE(desktop.waitUntil(
        [&] { return !permission.accessibilityTrusted() && !bench.isTrusted(); }));
    EXPECT_FALSE(permission.promptForAccessibility());
    EXPECT_EQ(bench.system().elementAtPosition({700, 400}), nullptr);

    desktop.launch({"dbus-daemon", "--nofork", "--nopidfile",
                    "--config-file=" + (desktop.folder() / "bus.conf").string()});
    EXPECT_TRUE(desktop.waitUntil([&] { return permission.promptForAccessibility(); }));
    EXPECT_TRUE(permission.accessibilityTrusted());
}

TEST(AtSpiBusLife, followsTheSwitchAndTurnsItOn) {
    AtSpiBench bench;
    const auto service = std::make_shared<AtSpiService>();
    AtSpiPermission permission(service);
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return permission.accessibilityTrusted(); }));
    AccessibilityBus(bench.desktop()).setEnabled(false);
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
