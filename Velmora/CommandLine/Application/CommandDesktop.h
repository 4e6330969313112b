// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <array>
#include <memory>
#include <string>

#include "Velmora/CommandLine/Application/ProbeServices.h"
#include "Velmora/CommandLine/Application/RecognizeServices.h"
#include "Velmora/Platform/Loader/PlatformLoader.h"

namespace velmora {

/// What a subcommand has of the desktop, for as long as it runs. Main thread.
class CommandDesktop {
  public:
    /// Whether the command is about what is on the screen, or content with a file.
    enum class Screen { needed, spared };

    /// Throws `UsageError` where a screen is needed and there is none.
    explicit CommandDesktop(Screen screen);
    ~CommandDesktop();
    CommandDesktop(const CommandDesktop&) = delete;
    CommandDesktop& operator=(const CommandDesktop&) = delete;

    ProbeServices probeServices() const;
    RecognizeServices recognizeServices() const;

  private:
    static PlatformChoice prepare(Screen screen);

    PlatformChoice choice_;
    int argumentCount_ = 1;
    std::string name_ = "velmora";
    std::array<char*, 2> arguments_{name_.data(), nullptr};
    QGuiApplication application_{argumentCount_, arguments_.data()};
    PlatformBackends backends_;
    std::shared_ptr<Clock> clock_;
    std::shared_ptr<MainQueue> mainQueue_;
    std::shared_ptr<SerialQueue> queue_;
};

}  // namespace velmora
