// SPDX-License-Identifier: MIT
#pragma once

#include "Tests/Contracts/X11/Support/PrivateServer.h"

namespace velmora::test {

/// While this lives, a server answers nobody, as while it is at work for somebody else. What was
/// sent to clients before has arrived there.
///
/// The thread that made this would wait for such a server without end. Where it begins to, that is
/// noted and the server goes on, so that a test that must not wait fails instead of hanging. One of
/// them at a time.
class PausedServer {
  public:
    explicit PausedServer(PrivateServer& server);
    ~PausedServer();
    PausedServer(const PausedServer&) = delete;
    PausedServer& operator=(const PausedServer&) = delete;

    /// Whether the thread that made this began to wait for an answer of a server.
    bool wasAwaited() const { return wasAwaited_; }

    /// To be called when a thread begins to wait for an answer; the others' waits are their own.
    static void noteWait();

  private:
    PrivateServer& server_;
    bool wasAwaited_ = false;
};

}  // namespace velmora::test
