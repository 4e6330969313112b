// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// Our program as its user starts it, on a virtual desktop: with settings of its own, the record of
/// its lookups and its debug log at hand.
class RunningVelmora {
  public:
    struct Moment {
        std::string name;  ///< "dwell", "captured", "painted", "ready".
        std::int64_t microseconds = 0;
    };

    struct CommandResult {
        int status = -1;
        std::string output;
    };

    struct Options {
        /// What is started; our program where this is empty.
        std::filesystem::path program = {};
        /// What its settings file holds when it starts; there is none where this is empty.
        std::string settings = "[General]\nhoverLookupEnabled=true\nonboardingCompleted=true\n";
        /// What it says of itself once it is ready.
        std::string readyStatus = "Hover lookup ready";
        ChildProcess::Environment environment;  ///< Besides the desktop's.
    };

    /// Starts it with hover lookup on and waits until it says that it is ready for hovers; throws
    /// std::runtime_error with what it wrote where that does not happen.
    explicit RunningVelmora(VirtualDesktop& desktop);
    RunningVelmora(VirtualDesktop& desktop, const Options& options);

    pid_t pid() const { return process_->pid(); }
    ChildProcess& process() { return *process_; }

    /// One of our commands, run beside it.
    CommandResult command(std::vector<std::string> arguments) const;

    /// The records of the lookups so far, oldest first. Lines that are still being written are not
    /// among them.
    std::vector<nlohmann::json> records() const;

    /// The moments that it noted so far.
    std::vector<Moment> moments() const;

    /// What it wrote to standard error.
    std::string log() const;

    /// From the start of the process to its readiness for the first hover, by its own notes.
    std::optional<std::int64_t> microsecondsToReady() const;

    /// Its mapped windows: panels and highlight, the topmost last.
    std::vector<VirtualDesktop::Window> windows() const;

    /// The processes that it consists of.
    std::vector<pid_t> processes() const;

    std::filesystem::path settingsFile() const;

  private:
    VirtualDesktop& desktop_;
    std::filesystem::path folder_;
    ChildProcess::Environment environment_;
    std::int64_t started_ = 0;
    std::unique_ptr<ChildProcess> process_;
};

}  // namespace velmora::test
