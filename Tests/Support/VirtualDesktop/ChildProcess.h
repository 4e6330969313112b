// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace velmora::test {

/// A program started by a test, leader of a session of its own. Dies with the test: by the
/// destructor, or by the kernel if the test itself is killed.
class ChildProcess {
  public:
    using Environment = std::map<std::string, std::string>;

    struct Options {
        std::vector<std::string> command;  ///< The program (searched in PATH) and its arguments.
        Environment environment;           ///< The whole environment of the program.
        std::filesystem::path workingFolder;
        std::filesystem::path outputFile;  ///< Receives standard output and error.
        int readyFd = -1;                  ///< Kept open in the program under the same number.
    };

    /// Throws std::runtime_error where the program cannot be started.
    explicit ChildProcess(const Options& options);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }

    /// Whether this process belongs to the program: itself, or anything it started.
    bool owns(pid_t pid) const;

    /// Still running; an ended program is reaped.
    bool isRunning();

    /// The exit status once it has ended by itself within this time; nothing otherwise. A program
    /// that was ended by a signal counts as 128 + the signal's number.
    std::optional<int> waitForExit(std::chrono::milliseconds timeout);

    /// Sends a signal to every process of the program (SIGSTOP and SIGCONT, say).
    void signalAll(int signal) const;

    /// What all processes of the program worked so far.
    std::chrono::milliseconds processorTime() const;

    /// What all processes of the program read from disks so far, in bytes.
    long long bytesRead() const;

    /// Asks the program to end, and ends what is left of it after some seconds.
    void end();

    /// Ends every process of the program at once and waits until they are gone.
    void kill();

  private:
    std::vector<pid_t> members() const;

    pid_t pid_ = -1;
    std::optional<int> exitStatus_;
};

}  // namespace velmora::test
