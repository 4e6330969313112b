// SPDX-License-Identifier: MIT
#include "Tests/Desktop/MainThread/MainThreadWaits.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <sstream>

namespace velmora::test {

namespace {

bool isIn(const std::string& caller, const char* library) {
    return caller.rfind(library, 0) == 0;
}

using Callers = std::vector<std::string>;

/// The nearest caller outside of these libraries; empty where there is none.
std::string beyond(const Callers& callers, std::initializer_list<const char*> libraries) {
    const auto found = std::ranges::find_if(callers, [&](const std::string& each) {
        return std::ranges::none_of(libraries,
                                    [&](const char* library) { return isIn(each, library); });
    });
    return found == callers.end() ? std::string() : *found;
}

/// Waits for answers on the message bus are waits for a thread of the toolkit that brings them.
bool bringsAnswers(const Callers& callers) {
    return isIn(beyond(callers, {"libQt6Core"}), "libQt6DBus") &&
           std::ranges::any_of(callers, [](const std::string& each) {
               return each.find("QWaitCondition4wait") != std::string::npos;
           });
}

bool isHandlingEvents(const MainThreadWait& wait) {
    return std::ranges::any_of(wait.callers,
                               [](const std::string& each) { return isIn(each, "libglib"); });
}

}  // namespace

bool MainThreadWait::isForDisplay() const {
    return !callers.empty() && (isIn(callers.front(), "libxcb") || isIn(callers.front(), "libX11"));
}

bool MainThreadWait::isForAssistants() const {
    return bringsAnswers(callers) &&
           isIn(beyond(callers, {"libQt6Core", "libQt6DBus"}), "libQt6Gui");
}

bool MainThreadWait::isForOwnThread() const {
    return (kind == "condition" || kind == "futex") && !bringsAnswers(callers);
}

std::string MainThreadWait::description() const {
    std::ostringstream text;
    text << kind << ", " << milliseconds << " ms, out of";
    for (const std::string& caller : callers) {
        text << "\n        " << caller;
    }
    return text.str();
}

ChildProcess::Environment witnessEnvironment(const std::filesystem::path& notes) {
    return {{"LD_PRELOAD", VELMORA_WAIT_WITNESS}, {"VELMORA_WAITS", notes.string()}};
}

std::vector<MainThreadWait> mainThreadWaits(const std::filesystem::path& notes) {
    std::vector<MainThreadWait> result;
    std::ifstream lines(notes);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        MainThreadWait wait;
        std::string unit;
        if (words >> wait.kind >> wait.milliseconds >> unit) {
            for (std::string caller; words >> caller;) {
                wait.callers.push_back(caller);
            }
            if (isHandlingEvents(wait)) {
                result.push_back(std::move(wait));
            }
        }
    }
    return result;
}

}  // namespace velmora::test
