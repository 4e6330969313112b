// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "Velmora/Platform/SystemInspection.h"

namespace velmora::testing {

/// A system on which nothing is missing until the test takes it away.
class FakeSystem final : public SystemInspection {
  public:
    std::optional<std::string> displayProblem() const override { return display; }
    bool canCaptureScreen() const override { return capture; }
    bool hasCompositor() const override { return compositor; }
    bool hasSessionBus() const override { return sessionBus; }
    bool hasAccessibilityBus() const override { return accessibilityBus; }
    bool isAccessibilityEnabled() const override { return accessibility; }
    bool hasTrayHost() const override { return tray; }
    std::optional<std::string> dictionaryProblem() const override { return dictionary; }
    std::string dictionaryPath() const override { return "/usr/share/velmora/cedict_ts.u8"; }
    RecognitionStatus recognition() const override { return recognitionStatus; }
    std::optional<std::string> environmentValue(const std::string& name) const override {
        const auto found = environment.find(name);
        return found != environment.end() ? std::optional(found->second) : std::nullopt;
    }
    bool canRead(const std::string& path) const override { return paths.contains(path); }
    std::vector<std::string> namesIn(const std::string& folder) const override {
        return folder == "/usr/lib" ? std::vector<std::string>{"x86_64-linux-gnu", "python3"}
                                    : std::vector<std::string>{};
    }

    std::optional<std::string> display;
    bool capture = true;
    bool compositor = true;
    bool sessionBus = true;
    bool accessibilityBus = true;
    bool accessibility = true;
    bool tray = true;
    std::optional<std::string> dictionary;
    RecognitionStatus recognitionStatus;
    std::map<std::string, std::string> environment{{"DISPLAY", ":7"},
                                                   {"XDG_RUNTIME_DIR", "/run/user/1000"}};
    std::set<std::string> paths{
        "/run/user/1000/pulse/native",
        "/usr/bin/apt-get",
        "/usr/bin/speech-dispatcher",
        "/usr/lib/speech-dispatcher-modules",
        "/usr/lib/speech-dispatcher-modules/sd_espeak-ng",
        "/usr/lib/x86_64-linux-gnu/espeak-ng-data",
        "/usr/lib/x86_64-linux-gnu/espeak-ng-data/cmn_dict",
        "/usr/lib/x86_64-linux-gnu/espeak-ng-data/lang/sit/cmn-Latn-pinyin"};
};

}  // namespace velmora::testing
