// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/CommandLine.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "Velmora/CommandLine/Core/AlignCommand.h"
#include "Velmora/CommandLine/Core/ApplicationPart.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/Help.h"
#include "Velmora/CommandLine/Core/LookupCommand.h"
#include "Velmora/CommandLine/Core/PinyinCommand.h"
#include "Velmora/CommandLine/Core/SegmentCommand.h"
#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {

namespace {

/// True when help is asked for among the options.
bool asksForHelp(std::span<const std::string> arguments) {
    const auto end = std::ranges::find(arguments, "--");
    return std::any_of(arguments.begin(), end, [](const std::string& argument) {
        return argument == "--help" || argument == "-h";
    });
}

int runCommand(std::string_view command, std::span<const std::string> arguments,
               CommandStreams& streams) {
    if (asksForHelp(arguments)) {
        streams.out << helpOf(command).value_or(generalHelp());
        return exitFound;
    }
    if (command == "lookup") {
        return runLookupCommand(arguments, streams);
    }
    if (command == "segment") {
        return runSegmentCommand(arguments, streams);
    }
    if (command == "pinyin") {
        return runPinyinCommand(arguments, streams);
    }
    return runAlignCommand(arguments, streams);
}

int answer(std::span<const std::string> arguments, CommandStreams& streams) {
    if (arguments.empty() || belongsToApplication(arguments.front())) {
        executeApplicationPart(arguments);
    }
    const std::string& command = arguments.front();
    if (command == "--help" || command == "-h") {
        streams.out << generalHelp();
        return exitFound;
    }
    if (command == "--version") {
        streams.out << "velmora " VELMORA_VERSION "\n";
        return exitFound;
    }
    if (!helpOf(command)) {
        throw UsageError((command.starts_with('-') ? "unknown option " : "unknown command ") +
                         printable(command));
    }
    return runCommand(command, arguments.subspan(1), streams);
}

/// "velmora lookup", for messages: the command only where it is one.
std::string calledAs(std::span<const std::string> arguments) {
    const bool known = !arguments.empty() && helpOf(arguments.front());
    return known ? "velmora " + arguments.front() : "velmora";
}

}  // namespace

int runCommandLine(std::span<const std::string> arguments, CommandStreams& streams) {
    int status = exitUsage;
    try {
        status = answer(arguments, streams);
        streams.out.flush();
        if (!streams.out) {
            throw UsageError("the answer cannot be written");
        }
        return status;
    } catch (const std::exception& error) {
        streams.err << calledAs(arguments) << ": " << error.what() << '\n';
    }
    return exitUsage;
}

}  // namespace velmora
