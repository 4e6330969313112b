// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace velmora::test {

/// An X server without a screen of its own, gone with the object, and its pointer and keyboard.
/// Throws std::runtime_error where something cannot be started.
class PrivateServer {
  public:
    explicit PrivateServer(int width = 1600, int height = 1000, const QStringList& options = {});
    ~PrivateServer();
    PrivateServer(const PrivateServer&) = delete;
    PrivateServer& operator=(const PrivateServer&) = delete;

    const std::string& display() const { return display_; }

    /// Starts a program on this display; it ends with the server.
    QProcess& launch(const QString& program, const QStringList& arguments);

    /// Starts a window manager, and returns when it takes care of every window that appears from
    /// then on. (One that is starting misses windows.)
    void startWindowManager();

    /// Runs a program on this display to its end.
    void run(const QString& program, const QStringList& arguments);

    /// Like a device: raw events are made.
    void movePointer(int x, int y);
    void movePointerBy(int dx, int dy);
    /// Not like a device: the pointer is set without an event of a device.
    void warpPointer(int x, int y);
    void press(int button);
    void release(int button);
    void keyDown(unsigned keysym);
    void keyUp(unsigned keysym);

    /// Ends the server at once, as a crash would.
    void crash();

    /// The server answers nobody until it goes on: nothing of it runs when `pause` returns. Tests
    /// use PausedServer, which does not let them hang.
    void pause();
    void goOn();

  private:
    std::uint32_t root() const;
    bool isManaged(std::uint32_t window);
    void fakeInput(int type, int detail, int x, int y);
    int keyCode(unsigned keysym) const;
    void finish();

    std::string display_;
    std::unique_ptr<QProcess> server_;
    std::vector<std::unique_ptr<QProcess>> programs_;
    xcb_connection_t* connection_ = nullptr;
};

}  // namespace velmora::test
