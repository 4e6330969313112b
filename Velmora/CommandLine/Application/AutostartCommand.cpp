// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/AutostartCommand.h"

#include <fstream>

#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {

namespace {

constexpr std::size_t lineLimit = 1000;

/// A path as the word of a command line in a desktop entry: quoted, with what is special there and
/// in the entry's own strings escaped.
std::string quoted(const std::string& path) {
    std::string text = "\"";
    for (const char character : path) {
        if (static_cast<unsigned char>(character) < ' ') {
            throw UsageError("the program stands at a path that no desktop entry can hold");
        }
        switch (character) {
            case '"':
            case '`':
            case '$':
                text += "\\\\";
                break;
            case '\\':
                text += "\\\\\\";
                break;
            case '%':
                text += '%';
                break;
            default:
                break;
        }
        text += character;
    }
    return text + '"';
}

bool isOn(const std::filesystem::path& entry) {
    std::ifstream file(entry);
    if (!file) {
        return false;
    }
    std::string line;
    for (std::size_t count = 0; count < lineLimit && std::getline(file, line); ++count) {
        // As desktops write it when the user takes the entry from their list.
        if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false") {
            return false;
        }
    }
    return true;
}

void switchOn(const std::filesystem::path& entry, const std::filesystem::path& program) {
    std::error_code error;
    std::filesystem::create_directories(entry.parent_path(), error);
    auto draft = entry;
    draft += ".new";
    {
        std::ofstream file(draft, std::ios::trunc);
        file << "[Desktop Entry]\nType=Application\nName=Velmora\n"
                "Comment=Explain the Chinese word under the pointer\nExec="
             << quoted(program.string())
             << "\nIcon=com.velmora.Velmora\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
        file.close();
        if (!file) {
            throw UsageError(entry.string() + " cannot be written");
        }
    }
    std::filesystem::rename(draft, entry, error);
    if (error) {
        throw UsageError(entry.string() + " cannot be written: " + error.message());
    }
}

void switchOff(const std::filesystem::path& entry) {
    std::error_code error;
    std::filesystem::remove(entry, error);
    if (error) {
        throw UsageError(entry.string() + " cannot be removed: " + error.message());
    }
}

}  // namespace

std::string_view autostartHelp() {
    return R"(usage: velmora autostart on|off|status

Lets Velmora start with the desktop session, or not; status tells which.

Exit status: 0 done; status: 0 on, 1 off.
)";
}

int runAutostartCommand(std::span<const std::string> arguments,
                        const std::filesystem::path& configuration,
                        const std::filesystem::path& program, CommandStreams& streams) {
    const Arguments given(arguments, {});
    const std::string& wish = given.onlyText("on, off or status");
    const auto entry = configuration / "autostart" / "com.velmora.Velmora.desktop";
    if (wish == "on") {
        switchOn(entry, program);
        return exitFound;
    }
    if (wish == "off") {
        switchOff(entry);
        return exitFound;
    }
    if (wish != "status") {
        throw UsageError("takes on, off or status");
    }
    const bool on = isOn(entry);
    streams.out << (on ? "on\n" : "off\n");
    return on ? exitFound : exitNothing;
}

}  // namespace velmora
