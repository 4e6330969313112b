// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>

#include <atomic>
#include <stdexcept>

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

constexpr const char* daemonName = "org.freedesktop.DBus";

/// What `dbus-send` prints of a reply, from this word on.
std::string replyAfter(VirtualDesktop& desktop, std::vector<std::string> command,
                       const std::string& word) {
    const std::string reply = desktop.run(std::move(command));
    const std::size_t found = reply.rfind(word);
    return found == std::string::npos ? "" : reply.substr(found + word.size());
}

/// Ends the daemon of the bus at this address as a crash would.
void killBus(VirtualDesktop& desktop, const std::string& address) {
    const std::string process = replyAfter(
        desktop,
        {"dbus-send", "--bus=" + address, "--print-reply", std::string("--dest=") + daemonName,
         "/org/freedesktop/DBus", "org.freedesktop.DBus.GetConnectionUnixProcessID",
         std::string("string:") + daemonName},
        "uint32 ");
    ::kill(std::stoi(process), SIGKILL);
}

std::string accessibilityAddress(VirtualDesktop& desktop) {
    const std::string rest =
        replyAfter(desktop,
                   {"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus",
                    "/org/a11y/bus", "org.a11y.Bus.GetAddress"},
                   "string \"");
    return rest.substr(0, rest.find('"'));
}

/// Who answers for the accessibility bus now; empty where nobody does. Starts nobody.
std::string launcher(VirtualDesktop& desktop) {
    try {
        return replyAfter(
            desktop,
            {"dbus-send", "--session", "--print-reply", std::string("--dest=") + daemonName,
             "/org/freedesktop/DBus", "org.freedesktop.DBus.GetNameOwner", "string:org.a11y.Bus"},
            "string \"");
    } catch (const std::runtime_error&) {
        return "";  // The daemon's answer where the name has no owner is an error.
    }
}

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

    const std::string before = launcher(bench.desktop());
    ASSERT_FALSE(before.empty());
    killBus(bench.desktop(), accessibilityAddress(bench.desktop()));
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return !bench.isTrusted(); }));
    EXPECT_EQ(element->boundsForRange({0, 1}), std::nullopt);
    EXPECT_EQ(element->title(), std::nullopt);
    EXPECT_EQ(element->parent(), nullptr);
    EXPECT_EQ(bench.system().elementAtPosition({700, 400}), nullptr);
    EXPECT_EQ(bench.system().focusedElement(), nullptr);
    bench.desktop().stop(bench.program());

    // The launcher ends with its bus; what it is still told in between goes with it.
    ASSERT_TRUE(bench.desktop().waitUntil([&] { return launcher(bench.desktop()) != before; }));
    setEnabled(bench.desktop(), true);
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

    killBus(desktop, address);
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
