// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

#include "Velmora/Platform/SystemInspection.h"

namespace velmora {

/// The system that this process runs on. Needs the toolkit's application object. Main thread.
class DesktopInspection final : public SystemInspection {
  public:
    /// How long one question may take.
    static constexpr std::chrono::seconds patience{5};

    /// How long the languages of recognition may take to load.
    static constexpr std::chrono::seconds loadingPatience{10};

    std::optional<std::string> displayProblem() const override;
    bool canCaptureScreen() const override;
    bool hasCompositor() const override;
    bool hasSessionBus() const override;
    bool hasAccessibilityBus() const override;
    bool isAccessibilityEnabled() const override;
    bool hasTrayHost() const override;
    std::optional<std::string> dictionaryProblem() const override;
    std::string dictionaryPath() const override;
    RecognitionStatus recognition() const override;
    std::optional<std::string> environmentValue(const std::string& name) const override;
    bool canRead(const std::string& path) const override;
    std::vector<std::string> namesIn(const std::string& folder) const override;

    /// Whether a question is still without an answer, so that the process cannot end in the
    /// ordinary way.
    bool isStuck() const { return displayStuck_ || busStuck_; }

  private:
    /// The answer, or false where none comes in time or an earlier one did not.
    static bool answered(bool& stuck, std::function<bool()> question);

    mutable bool displayStuck_ = false;
    mutable bool busStuck_ = false;
};

}  // namespace velmora
