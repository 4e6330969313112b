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
    const char* option;  ///< The only one that it takes; null for none.
    const char* help;
    /// False where no program runs.
    bool (*run)(RemoteControlClient& client, bool withOption);
};

bool toggle(RemoteControlClient& client, bool /*withOption*/) {
    const auto enabled = client.toggleHoverLookup();
    if (enabled) {
        std::puts(*enabled ? "Hover lookup on" : "Hover lookup off");
    }
    return enabled.has_value();
}

bool diagnostics(RemoteControlClient& client, bool copy) {
    if (copy) {
        return client.copyDiagnostics();
    }
    const auto text = client.diagnostics();
    if (text) {
        std::puts(text->c_str());
    }
    return text.has_value();
}

constexpr std::array<RemoteCommand, 5> commands{{
    {"settings", nullptr, "Shows the settings window of the running Velmora.",
     [](RemoteControlClient& client, bool /*withOption*/) { return client.showSettings(); }},
    {"onboarding", nullptr, "Shows the introduction of the running Velmora.",
     [](RemoteControlClient& client, bool /*withOption*/) { return client.showOnboarding(); }},
    {"toggle", nullptr, "Switches hover lookup on or off in the running Velmora and tells which.",
     toggle},
    {"diagnostics", "--copy",
     "Prints the state of hover lookup in the running Velmora.\n\n"
     "  --copy             put it on the clipboard instead\n",
     diagnostics},
    {"quit", nullptr, "Ends the running Velmora.",
     [](RemoteControlClient& client, bool /*withOption*/) { return client.quit(); }},
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
    const std::string option = command->option != nullptr ? command->option : "";
    const std::string given = arguments.size() == 2 ? arguments[1] : "";
    if (given == "--help" || given == "-h") {
        std::printf("usage: velmora %s%s\n\n%s\nExit status: 0 done, 1 where none runs.\n",
                    command->name, option.empty() ? "" : (" [" + option + "]").c_str(),
                    command->help);
        return done;
    }
    const bool withOption = !option.empty() && given == option;
    if (arguments.size() > 2 || (!given.empty() && given != "--" && !withOption)) {
        std::fprintf(stderr, "velmora %s: takes no %sarguments\n", command->name,
                     option.empty() ? "" : "other ");
        return wrongUsage;
    }
    int count = 1;
    std::string name = "velmora";
    std::array<char*, 2> values{name.data(), nullptr};
    const QCoreApplication application(count, values.data());
    RemoteControlClient client;
    if (!command->run(client, withOption)) {
        std::fprintf(stderr, "velmora %s: Velmora is not running\n", command->name);
        return notRunning;
    }
    return done;
}

}  // namespace velmora
