// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/AccessibilityBus.h"

#include <stdexcept>
#include <vector>

namespace velmora::test {

namespace {

const std::string sessionBus = "--session";
const std::string launcherService = "org.a11y.Bus";
const std::string launcherPath = "/org/a11y/bus";
const std::string registryService = "org.a11y.atspi.Registry";
const std::string daemonService = "org.freedesktop.DBus";
const std::string daemonPath = "/org/freedesktop/DBus";

/// What stands in quotation marks last in the reply that `dbus-send` prints.
std::string quoted(const std::string& reply) {
    const std::size_t end = reply.rfind('"');
    const std::size_t begin = end == std::string::npos ? end : reply.rfind('"', end - 1);
    return begin == std::string::npos ? "" : reply.substr(begin + 1, end - begin - 1);
}

}  // namespace

std::string AccessibilityBus::ask(const std::string& bus, const std::string& destination,
                                  const std::string& path, const std::string& method,
                                  const std::string& argument) {
    std::vector<std::string> command{"dbus-send", bus,   "--print-reply", "--dest=" + destination,
                                     path,        method};
    if (!argument.empty()) {
        command.push_back("string:" + argument);
    }
    return desktop_.run(std::move(command));
}

pid_t AccessibilityBus::processOf(const std::string& bus, const std::string& name) {
    const std::string reply =
        ask(bus, daemonService, daemonPath, daemonService + ".GetConnectionUnixProcessID", name);
    return std::stoi(reply.substr(reply.rfind(' ')));
}

std::string AccessibilityBus::address() {
    return quoted(ask(sessionBus, launcherService, launcherPath, launcherService + ".GetAddress"));
}

std::string AccessibilityBus::launcherName() {
    try {
        return quoted(ask(sessionBus, daemonService, daemonPath, daemonService + ".GetNameOwner",
                          launcherService));
    } catch (const std::runtime_error&) {
        return "";  // The daemon's answer where the name has no owner is an error.
    }
}

pid_t AccessibilityBus::launcher() {
    return processOf(sessionBus, launcherService);
}

pid_t AccessibilityBus::registry() {
    const std::string bus = "--bus=" + address();
    ask(bus, registryService, "/org/a11y/atspi/registry", registryService + ".GetRegisteredEvents");
    return processOf(bus, registryService);
}

pid_t AccessibilityBus::daemon(const std::string& address) {
    return processOf("--bus=" + address, daemonService);
}

void AccessibilityBus::setEnabled(bool enabled) {
    desktop_.run({"dbus-send", sessionBus, "--print-reply", "--dest=" + launcherService,
                  launcherPath, "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status",
                  "string:IsEnabled",
                  std::string("variant:boolean:") + (enabled ? "true" : "false")});
}

}  // namespace velmora::test
