// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/ChildProcess.h"
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// What a virtual desktop stands on: its folder, its X server and its session bus, and how programs
/// are started on them. Everything is gone with the object.
class DesktopServices {
  public:
    /// Throws std::runtime_error with a clear text where a part cannot be started.
    explicit DesktopServices(const VirtualDesktop::Options& options);
    ~DesktopServices();
    DesktopServices(const DesktopServices&) = delete;
    DesktopServices& operator=(const DesktopServices&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    const std::string& display() const { return display_; }
    const std::string& busAddress() const { return busAddress_; }
    ChildProcess::Environment environment() const;

    /// Starts a program whose output goes to this file of the folder.
    std::unique_ptr<ChildProcess> start(std::vector<std::string> command,
                                        const ChildProcess::Environment& extra = {},
                                        int readyFd = -1,
                                        const std::string& output = "log.txt") const;

    /// Starts a program, waits for its end and gives what it wrote; throws where it fails.
    std::string run(std::vector<std::string> command) const;

  private:
    /// Starts a program that says on a pipe that it is ready; empty where it gave up.
    std::string startAnnounced(std::unique_ptr<ChildProcess>& program,
                               std::function<std::vector<std::string>(int)> command) const;
    void startServer(const VirtualDesktop::Options& options);
    void startBus();

    std::filesystem::path folder_;
    std::string display_;
    std::string busAddress_;
    std::unique_ptr<ChildProcess> server_;
    std::unique_ptr<ChildProcess> bus_;
};

}  // namespace velmora::test
