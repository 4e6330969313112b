// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

namespace velmora {

/// A helper program with one socket to it on its descriptor 3 and nothing else open. It is killed
/// with this object.
class ChildProcess {
  public:
    /// Starts a program with these arguments (the first is its name) and these settings added to
    /// the environment ("NAME=value"); null where it cannot be started.
    static std::unique_ptr<ChildProcess> start(const std::string& program,
                                               const std::vector<std::string>& arguments,
                                               const std::vector<std::string>& environment);

    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const { return id_; }
    int socket() const { return socket_; }

  private:
    ChildProcess(pid_t id, int socket) : id_(id), socket_(socket) {}

    pid_t id_;
    int socket_;
};

}  // namespace velmora
