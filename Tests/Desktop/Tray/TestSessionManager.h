// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

namespace velmora::test {

/// A session manager of X desktops for programs that know it by SESSION_MANAGER. Answers them on a
/// thread of its own.
class TestSessionManager {
  public:
    /// Throws std::runtime_error where it cannot listen.
    TestSessionManager();
    ~TestSessionManager();
    TestSessionManager(const TestSessionManager&) = delete;
    TestSessionManager& operator=(const TestSessionManager&) = delete;

    /// The value of SESSION_MANAGER.
    const std::string& address() const;

    /// The programs that take part in the session now.
    int clients();

    /// Asks all to save what they have and ends them as soon as they say that they have.
    void logOut();
    bool everybodySaved();

    /// How the last program that said so wants to be started again: 3 is never; −1 where none did.
    int restartStyle();

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora::test
