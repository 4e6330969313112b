// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/RemoteCommands.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>

#include "Velmora/Platform/Linux/RemoteControlClient.h"

namespace velmora {

namespace {

struct RemoteCommand {
    const char* name;
    const char* help;
    /// False where no program runs.
    bool (*run)(RemoteControlClient& client);
};

bool toggle(RemoteControlClient& client) {
    const auto enabled = client.toggleHoverLookup();
    if (enabled) {
        std::puts(*enabled ? "Hover lookup on" : "Hover lookup off");
    }
    return enabled.has_value();
}

bool diagnostics(RemoteControlClient& client) {
    const auto text = client.diagnostics();
    if (text) {
        std::puts(text->c_str());
    }
    return text.has_value();
}

constexpr std::array<RemoteCommand, 5> commands{{
    {"settings", "Shows the settings window of the running Velmora.",
     [](RemoteControlClient& client) { return client.showSettings(); }},
    {"onboarding", "Shows the introduction of the running Velmora.",
     [](RemoteControlClient& client) { return client.showOnboarding(); }},
    {"toggle", "Switches hover lookup on or off in the running Velmora and tells which.", toggle},
    {"diagnostics", "Prints the state of hover lookup in the running Velmora.", diagnostics},
    {"quit", "Ends the running Velmora.",
     [](RemoteControlClient& client) { return client.quit(); }},
}};

const RemoteCommand* find(const std::string& name) {
    const auto* const found =
        std::find_if(commands.begin(), commands.end(),
                     [&](const RemoteCommand& command) { return name == command.name; });
    return found != commands.end() ? found : nullptr;
}

}  // namespace

bool isRemoteCommand(const std::string& name) {
    return find(name) != nullptr;
}

int runRemoteCommand(const std::vector<std::string>& arguments) {
    constexpr int done = 0;
    constexpr int notRunning = 1;
    constexpr int wrongUsage = 2;
    const RemoteCommand* const command = arguments.empty() ? nullptr : find(arguments.front());
    if (command == nullptr) {
        return wrongUsage;
    }
    if (arguments.size() == 2 && (arguments[1] == "--help" || arguments[1] == "-h")) {
        std::printf("Usage: velmora %s\n\n%s\nExit status: 0 done, 1 where none runs.\n",
                    command->name, command->help);
        return done;
    }
    if (arguments.size() > 2 || (arguments.size() == 2 && arguments[1] != "--")) {
        std::fprintf(stderr, "velmora %s: takes no arguments\n", command->name);
        return wrongUsage;
    }
    int count = 1;
    std::string name = "velmora";
    std::array<char*, 2> values{name.data(), nullptr};
    const QCoreApplication application(count, values.data());
    RemoteControlClient client;
    if (!command->run(client)) {
        std::fprintf(stderr, "velmora %s: Velmora is not running\n", command->name);
        return notRunning;
    }
    return done;
}

}  // namespace velmora
