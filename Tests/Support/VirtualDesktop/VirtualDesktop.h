// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/ChildProcess.h"
#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora::test {

/// A desktop for one test: an X server without a screen of its own, a session bus, the
/// accessibility bus (switched on), a window manager, and empty home and runtime folders. Programs
/// started on it see nothing of the machine's own desktop. All of it is gone with the object.
///
/// Coordinates are pixels of the X server, origin at the top left. One at a time per process; main
/// thread only.
class VirtualDesktop {
  public:
    struct Options {
        int width = 1600;
        int height = 1000;
        bool windowManager = true;
        bool accessibility = true;  ///< The accessibility bus runs and its switch is on.
        std::vector<std::string> serverArguments;
    };

    struct Window {
        std::uint64_t id = 0;
        pid_t processId = -1;
        std::string title;
        Rect client;            ///< What the program draws.
        bool overrideRedirect;  ///< Not managed by the window manager: a menu, a panel of ours.
    };

    using Milliseconds = std::chrono::milliseconds;
    static constexpr Milliseconds patience{60000};  ///< Machines that run tests may be slow.

    /// Throws std::runtime_error with a clear text where a part cannot be started.
    VirtualDesktop();
    explicit VirtualDesktop(const Options& options);
    ~VirtualDesktop();
    VirtualDesktop(const VirtualDesktop&) = delete;
    VirtualDesktop& operator=(const VirtualDesktop&) = delete;

    const std::string& display() const;            ///< ":120".
    const std::string& sessionBusAddress() const;  ///< The value of DBUS_SESSION_BUS_ADDRESS.
    const std::filesystem::path& folder() const;  ///< Removed at the end; programs may write there.

    /// The variables that programs on this desktop get, and nothing of this process's own but PATH.
    ChildProcess::Environment environment() const;

    /// Gives this process the desktop's variables until the desktop ends.
    void enter();

    /// Starts a program; it lives until the desktop ends, `stop` is called, or it ends itself.
    ChildProcess& launch(std::vector<std::string> command,
                         const ChildProcess::Environment& extraEnvironment = {});
    void stop(ChildProcess& program);

    /// Starts a program, waits for its end and gives what it wrote; throws where it fails.
    std::string run(std::vector<std::string> command);

    /// What the programs wrote to standard output and error so far, for failure messages.
    std::string log() const;

    /// A text file in the desktop's folder.
    std::filesystem::path writeFile(const std::string& name, const std::string& content) const;

    // Windows.
    std::vector<Window> windows() const;  ///< The mapped ones, the topmost last.

    /// Waits until a window that satisfies this is mapped; throws after the deadline.
    Window waitForWindow(const std::function<bool(const Window&)>& wanted,
                         Milliseconds timeout = patience);
    Window waitForWindowOf(const ChildProcess& program, Milliseconds timeout = patience);

    /// Looks again at every event of the X server, and some times a second besides, until the
    /// condition holds; false after the deadline.
    bool waitUntil(const std::function<bool()>& condition, Milliseconds timeout = patience);

    /// Waits until the program has next to nothing to do for a while and reads nothing from disks;
    /// goes on after the time in any case, since some never rest.
    void awaitRest(const ChildProcess& program, Milliseconds timeout = std::chrono::seconds(15));

    /// Moves and resizes a window as a pager would, and waits until it stands there, give or take
    /// its decoration.
    void placeWindow(std::uint64_t window, const Rect& client);

    /// The same for a program that has just shown its window: waits until the window rests there
    /// together with the program, and places it again as often as the program moves it. Those that
    /// load a document still maximise their windows then.
    void settleWindow(const ChildProcess& program, std::uint64_t window, const Rect& client);

    /// Gives a window the focus as a pager would, and waits until it or one inside it has it.
    void activateWindow(std::uint64_t window);
    std::uint64_t focusedWindow() const;

    // Pointer and keyboard: hardware-like motion, which monitors of raw events see.
    void movePointer(int x, int y);
    void movePointerBy(int dx, int dy);
    void pressButton(unsigned button);
    void releaseButton(unsigned button);
    void click(int x, int y, unsigned button = 1);
    void pressKey(const std::string& keysym);  ///< "Shift_L", "a", "Return".
    void releaseKey(const std::string& keysym);
    void typeKey(const std::string& keysym);

    // Pixels.
    Image screenshot() const;
    Image screenshot(const Rect& area) const;

    /// Waits until two pictures of the area, a moment apart, are the same.
    Image settledScreenshot(const Rect& area, Milliseconds timeout = patience);

    static void savePng(const Image& image, const std::filesystem::path& file);

  private:
    void startWindowManager();

    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora::test
