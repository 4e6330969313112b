// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

class QCoreApplication;

namespace velmora::test {

/// An application object and its event loop for one test.
class EventLoop {
  public:
    /// Without windows.
    EventLoop();

    /// With windows on a display, each screen scaled by its factor ("1;2"; empty for none).
    explicit EventLoop(const std::string& display, const std::string& screenFactors = {});
    ~EventLoop();

    /// Handles events until the condition holds; false where it never comes to hold.
    static bool waitUntil(const std::function<bool()>& condition);

    /// Handles events until there are none.
    static void settle();

    /// Handles what is there; whether there was anything.
    static bool handleNow();

  private:
    std::unique_ptr<QCoreApplication> application_;
};

}  // namespace velmora::test
