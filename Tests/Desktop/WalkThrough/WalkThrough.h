// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Tests/Contracts/Speech/PrivateSpeechDaemon.h"
#include "Tests/Contracts/StatusNotifier/TrayHost.h"
#include "Tests/Contracts/StatusNotifier/TrayWatcher.h"
#include "Tests/Desktop/Support/RunningVelmora.h"
#include "Tests/Desktop/Support/SampleText.h"
#include "Tests/Desktop/Support/TextLine.h"

namespace velmora::test {

/// A fresh user's desktop with our program just started for the first time on it: a tray that
/// hosts its item, a speech daemon that writes down what it says, and nothing allowed yet.
/// Rectangles and points are pixels of the X server.
class WalkThrough {
  public:
    static constexpr int width = 1280;
    static constexpr int height = 860;

    /// `name` begins the names of the pictures that `keepPicture` leaves.
    explicit WalkThrough(std::string name);
    ~WalkThrough();

    VirtualDesktop& desktop() { return *desktop_; }
    RunningVelmora& velmora() { return *velmora_; }
    const PrivateSpeechDaemon& speech() const { return speech_; }
    const SampleText& text() const { return text_; }

    /// The window of our program with this title; waits for it.
    VirtualDesktop::Window window(const std::string& title);
    bool hasWindow(const std::string& title) const;
    bool awaitNoWindow(const std::string& title);

    /// Clicks where the content of a window has this point, and waits until the window shows
    /// something else and has come to rest.
    void clickIn(const VirtualDesktop::Window& window, Point place);

    /// Presses a key and waits in the same way.
    void typeIn(const VirtualDesktop::Window& window, const std::string& keysym);

    /// Waits until `velmora diagnostics` tells this.
    bool awaitDiagnostics(const std::string& line);
    std::string diagnostics() const;

    /// Waits until the settings file holds this line.
    bool awaitSetting(const std::string& line);

    /// Opens the sample text in a browser.
    void openReader();

    /// Rests the pointer on a character of the sample text and waits for the lookup: its record.
    nlohmann::json hover(std::size_t line, std::size_t position);
    /// Moves the pointer away and waits until nothing of ours is shown over the text.
    void leave();

    /// The window of the popover, the topmost but for the highlight; waits until it satisfies this.
    Rect popover(const std::function<bool(const Rect&)>& wanted = [](const Rect&) { return true; });

    /// How much of an area has, about, this colour.
    std::size_t pixelsOf(const Rect& area, std::uint32_t color);

    /// The entries of the tray's menu as a panel reads them when it opens it.
    BusMenuNode openMenu();
    /// Chooses an entry of the menu, and closes it.
    void choose(const std::string& title);

    /// Keeps a picture of the desktop as it is now, unless pictures are switched off.
    void keepPicture(const std::string& step);
    void keepPictures(bool keep) { keepsPictures_ = keep; }

  private:
    void paintDesktop();
    void act(const Rect& area, const std::function<void()>& action);
    void moveTo(Point place);
    std::vector<VirtualDesktop::Window> panels() const;

    std::string name_;
    int pictures_ = 0;
    bool keepsPictures_ = true;
    SampleText text_;
    PrivateSpeechDaemon speech_{"espeak-ng"};
    std::unique_ptr<VirtualDesktop> desktop_;
    std::unique_ptr<testing::TrayWatcher> watcher_;
    std::unique_ptr<RunningVelmora> velmora_;
    std::unique_ptr<testing::TrayHost> tray_;
    std::vector<TextLine> lines_;
    Point pointer_{640, 800};
};

}  // namespace velmora::test
