// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

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

    void kill();
    void restart();

  private:
    void start();

    std::filesystem::path folder_;
    std::string moduleName_;
    int fifo_ = -1;
    pid_t daemon_ = -1;
};

}  // namespace velmora::test
