// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "Tests/Support/VirtualDesktop/ChildProcess.h"

namespace velmora::test {

/// A speech daemon of the test's own whose only output module tells what it was asked to say
/// instead of making a sound, and goes on "speaking" until it is cut off. Sets SPEECHD_ADDRESS for
/// the process, so that one exists at a time.
class PrivateSpeechDaemon {
  public:
    struct Spoken {
        std::string text;
        std::string voice;
        std::string rate;
    };

    /// Starts the daemon with its module under this name and waits until it accepts connections.
    explicit PrivateSpeechDaemon(const std::string& moduleName);
    ~PrivateSpeechDaemon();
    PrivateSpeechDaemon(const PrivateSpeechDaemon&) = delete;
    PrivateSpeechDaemon& operator=(const PrivateSpeechDaemon&) = delete;

    /// The next thing that the module was asked to say; nothing if none came in time.
    std::optional<Spoken> nextSpoken(
        std::chrono::milliseconds deadline = std::chrono::seconds(20)) const;

    /// Ends the daemon, its modules, and whatever daemon a client started in its place.
    void kill();
    void restart();

  private:
    void start();

    std::filesystem::path folder_;
    std::string moduleName_;
    int fifo_ = -1;
    std::unique_ptr<ChildProcess> daemon_;
};

}  // namespace velmora::test
