// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// The test's own connection to the X server of a virtual desktop.
class DesktopConnection {
  public:
    /// Throws std::runtime_error where the server does not answer.
    explicit DesktopConnection(const std::string& display);
    ~DesktopConnection();

    std::vector<VirtualDesktop::Window> windows() const;
    bool windowManagerIsThere() const;
    std::uint64_t focusedWindow() const;

    /// Whether the window or one inside it has the focus.
    bool holdsFocus(std::uint64_t window) const;

    /// Whether some window has the focus, and not this one.
    bool focusIsHeldByAnotherThan(std::uint64_t window) const;

    /// A small window of the test's own.
    std::uint64_t openWindow() const;
    void closeWindow(std::uint64_t window) const;

    /// Waits for any event of the server, at most this long, and discards what came.
    void awaitEvent(std::chrono::milliseconds timeout) const;

    void placeWindow(std::uint64_t window, const Rect& client) const;
    void activateWindow(std::uint64_t window) const;

    void movePointer(int x, int y) const;
    void movePointerBy(int dx, int dy) const;
    void button(unsigned number, bool down) const;
    void key(const std::string& keysym, bool down) const;

    Image capture(const Rect& area) const;

  private:
    struct Connection;
    std::unique_ptr<Connection> connection_;
};

}  // namespace velmora::test
