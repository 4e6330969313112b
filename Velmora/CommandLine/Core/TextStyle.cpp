// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/TextStyle.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace velmora {

namespace {

constexpr std::size_t defaultWidth = 80;
constexpr std::size_t narrowest = 24;
constexpr std::size_t widest = 100;  // longer lines are hard to read, however wide the terminal

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

bool isDumb() {
    const char* terminal = std::getenv("TERM");
    return terminal == nullptr || *terminal == '\0' || std::string_view(terminal) == "dumb";
}

std::string wrapped(bool colours, std::string_view code, std::string_view text) {
    if (!colours || text.empty()) {
        return std::string(text);
    }
    std::string result = "\x1b[";
    result.append(code).append("m").append(text).append("\x1b[0m");
    return result;
}

std::string_view colourCode(PinyinTone tone) {
    switch (tone) {
        case PinyinTone::first:
            return "31";
        case PinyinTone::second:
            return "33";
        case PinyinTone::third:
            return "32";
        case PinyinTone::fourth:
            return "94";
        case PinyinTone::neutral:
            break;
    }
    return "90";
}

}  // namespace

TextStyle TextStyle::ofStandardOutput() {
    if (isatty(STDOUT_FILENO) == 0) {
        return {};
    }
    TextStyle style{.colours = !isSet("NO_COLOR") && !isDumb(), .width = defaultWidth};
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        style.width = size.ws_col;
    }
    style.width = std::clamp(style.width, narrowest, widest);
    return style;
}

std::string TextStyle::toned(std::string_view text, PinyinTone tone) const {
    return wrapped(colours, colourCode(tone), text);
}

std::string TextStyle::strong(std::string_view text) const {
    return wrapped(colours, "1", text);
}

std::string TextStyle::quiet(std::string_view text) const {
    return wrapped(colours, "90", text);
}

}  // namespace velmora
