// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/ChildProcess.h"

namespace velmora::test {

/// A speech daemon with a real synthesiser that sounds into a sound server of the test's own, whose
/// output nobody hears but the test. Sets SPEECHD_ADDRESS for the process, so that one exists at a
/// time.
class SoundingSpeechDaemon {
  public:
    using Samples = std::vector<std::int16_t>;

    static constexpr int rate = 22050;  ///< Samples per second.

    /// Waits until a word can be said and recorded; throws std::runtime_error where that does not
    /// come.
    SoundingSpeechDaemon();
    ~SoundingSpeechDaemon();
    SoundingSpeechDaemon(const SoundingSpeechDaemon&) = delete;
    SoundingSpeechDaemon& operator=(const SoundingSpeechDaemon&) = delete;

    /// All that was heard so far, silence included.
    Samples heard() const;

    /// Waits until a sound is heard after this many samples, and then until it has been silent for
    /// this long; gives the sound without the silence around it and in it. Empty where none comes.
    Samples nextSound(std::size_t after,
                      std::chrono::milliseconds silence = std::chrono::milliseconds(700)) const;
    /// Waits until a sound is heard after this many samples.
    bool isHeard(std::size_t after) const;

    /// What the synthesiser makes of a text by itself, at so many words a minute; no silence in it.
    Samples rendered(const std::string& text, const std::string& voice, int wordsPerMinute) const;

    void kill();
    void start();

    /// What the daemon, the synthesiser and the sound server say of themselves, for the messages of
    /// failed tests.
    std::string account() const;

  private:
    std::string inFolder(const char* name) const { return (folder_ / name).string(); }
    std::unique_ptr<ChildProcess> launch(std::vector<std::string> command,
                                         const char* output) const;
    static bool waitUntil(const std::function<bool()>& condition);

    std::filesystem::path folder_;
    std::unique_ptr<ChildProcess> soundServer_;
    std::unique_ptr<ChildProcess> recorder_;
    std::unique_ptr<ChildProcess> daemon_;
};

}  // namespace velmora::test
