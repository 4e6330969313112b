// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

namespace velmora {

/// Turns the signals that ask the process to end (SIGTERM, SIGINT, SIGHUP) into a call on the main
/// thread. One object per process.
class TerminationSignals {
  public:
    explicit TerminationSignals(std::function<void()> terminate);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

  private:
    class Pipe;
    std::unique_ptr<Pipe> pipe_;
};

}  // namespace velmora
