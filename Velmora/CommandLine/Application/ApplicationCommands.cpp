// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ApplicationCommands.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <span>

#include "Velmora/CommandLine/Application/AutostartCommand.h"
#include "Velmora/CommandLine/Application/CommandDesktop.h"
#include "Velmora/CommandLine/Application/DoctorCommand.h"
#include "Velmora/CommandLine/Application/ProbeCommand.h"
#include "Velmora/CommandLine/Application/RecognizeCommand.h"
#include "Velmora/CommandLine/Application/RemoteCommands.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/Platform/Linux/XdgPaths.h"
#include "Velmora/Platform/Loader/DesktopInspection.h"

namespace velmora {

namespace {

using Arguments = std::span<const std::string>;

bool asksForHelp(Arguments arguments) {
    const auto end = std::ranges::find(arguments, "--");
    return std::any_of(arguments.begin(), end, [](const std::string& argument) {
        return argument == "--help" || argument == "-h";
    });
}

int probe(Arguments arguments, CommandStreams& streams) {
    if (asksForHelp(arguments)) {
        streams.out << probeHelp();
        return exitFound;
    }
    std::optional<CommandDesktop> desktop;
    const auto services = [&desktop] {
        return desktop.emplace(CommandDesktop::Screen::needed).probeServices();
    };
    return runProbeCommand(arguments, services, streams);
}

int recognize(Arguments arguments, CommandStreams& streams) {
    if (asksForHelp(arguments)) {
        streams.out << recognizeHelp();
        return exitFound;
    }
    std::optional<CommandDesktop> desktop;
    const auto services = [&desktop] {
        return desktop.emplace(CommandDesktop::Screen::spared).recognizeServices();
    };
    return runRecognizeCommand(arguments, services, streams);
}

int doctor(Arguments arguments, CommandStreams& streams) {
    if (asksForHelp(arguments)) {
        streams.out << doctorHelp();
        return exitFound;
    }
    int count = 1;
    std::string name = "velmora";
    char* values[] = {name.data(), nullptr};
    const QCoreApplication application(count, values);
    const DesktopInspection system;
    const int status = runDoctorCommand(arguments, system, streams);
    if (system.isStuck()) {
        // Somebody still owes an answer, and an ordinary end would wait for it.
        streams.out.flush();
        std::_Exit(status);
    }
    return status;
}

/// The command that starts the whole program: beside this executable.
std::filesystem::path startCommand() {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        throw UsageError("the place of this program cannot be found: " + error.message());
    }
    const auto command = self.parent_path() / "velmora";
    return std::filesystem::exists(command, error) ? command : self;
}

int autostart(Arguments arguments, CommandStreams& streams) {
    if (asksForHelp(arguments)) {
        streams.out << autostartHelp();
        return exitFound;
    }
    const auto configuration = xdg::configHome();
    if (!configuration) {
        throw UsageError("there is no home folder");
    }
    return runAutostartCommand(arguments, *configuration, startCommand(), streams);
}

int run(const std::string& command, Arguments arguments, CommandStreams& streams) {
    if (command == "probe") {
        return probe(arguments, streams);
    }
    if (command == "recognize") {
        return recognize(arguments, streams);
    }
    if (command == "doctor") {
        return doctor(arguments, streams);
    }
    if (command == "autostart") {
        return autostart(arguments, streams);
    }
    throw UsageError("there is no such command in this program");
}

}  // namespace

int runApplicationCommand(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        return exitUsage;
    }
    if (isRemoteCommand(arguments.front())) {
        return runRemoteCommand(arguments);
    }
    CommandStreams streams{
        .in = std::cin, .out = std::cout, .err = std::cerr, .style = TextStyle::ofStandardOutput()};
    try {
        const int status = run(arguments.front(), Arguments(arguments).subspan(1), streams);
        streams.out.flush();
        if (!streams.out) {
            throw UsageError("the answer cannot be written");
        }
        return status;
    } catch (const std::exception& error) {
        streams.err << "velmora " << arguments.front() << ": " << error.what() << '\n';
    }
    return exitUsage;
}

}  // namespace velmora
