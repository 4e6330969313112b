// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/RecognitionStatus.h"

namespace velmora {

/// Looks at the running system for the parts that the program needs. Every question is answered
/// within a few seconds, whatever is broken; what does not answer counts as missing.
class SystemInspection {
  public:
    virtual ~SystemInspection() = default;

    /// Why there is no display that the program works with; nothing where there is one.
    virtual std::optional<std::string> displayProblem() const = 0;
    virtual bool canCaptureScreen() const = 0;
    virtual bool hasCompositor() const = 0;

    virtual bool hasSessionBus() const = 0;
    virtual bool hasAccessibilityBus() const = 0;
    /// Whether programs are told to offer their texts.
    virtual bool isAccessibilityEnabled() const = 0;
    /// Whether something shows tray items: on the session bus, or a panel that embeds icons.
    virtual bool hasTrayHost() const = 0;

    /// Why the word list cannot be used; nothing where it can.
    virtual std::optional<std::string> dictionaryProblem() const = 0;
    /// Where the word list is or ought to be.
    virtual std::string dictionaryPath() const = 0;

    /// How recognition is once its languages have been loaded for a trial.
    virtual RecognitionStatus recognition() const = 0;

    /// A variable of the environment; nothing where it is not set.
    virtual std::optional<std::string> environmentValue(const std::string& name) const = 0;
    /// Whether there is a file or folder at this absolute path that can be read.
    virtual bool canRead(const std::string& path) const = 0;
    /// The names in a folder, at most a few hundred; none where it cannot be read.
    virtual std::vector<std::string> namesIn(const std::string& folder) const = 0;
};

}  // namespace velmora
