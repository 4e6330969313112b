// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"
#include "Velmora/Platform/AccessibilityElement.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSystem.h"
#include "Velmora/Platform/ScreenGeometry.h"

namespace velmora::test {

/// The text that every real program is shown: one word after characters that have two UTF-16
/// units, and 国 alone between wide blanks, so that its ink can be told from its neighbours'.
extern const char* const contractText;

/// A virtual desktop with one real program on it and the backend under test.
class AtSpiBench {
  public:
    AtSpiBench();
    ~AtSpiBench();

    VirtualDesktop& desktop() { return *desktop_; }
    AtSpiSystem& system();
    bool isTrusted() const;

    /// Starts the program, puts its window in its place and waits until both rest.
    void start(std::vector<std::string> command, const ChildProcess::Environment& extra = {});

    /// Whether the backend may ask the window system what is selected, as it may until then.
    void offerSelections(bool offered);

    /// How the screens are said to stand; one screen of ratio 1 until then.
    void setScreens(ScreenGeometry geometry);

    /// Puts the program's window somewhere else; pixels of the X server.
    void moveWindow(const Rect& client);

    const VirtualDesktop::Window& window() const { return window_; }
    ChildProcess& program() { return *program_; }

    /// The element whose value holds this text, found by looking at points of the window until it
    /// stays in one place; null after the deadline.
    AccessibilityElement::Pointer elementShowing(const std::string& text);

    /// The same on the present state of the screen, without waiting.
    AccessibilityElement::Pointer findNow(const std::string& text);

    /// Ink (pixels unlike the most frequent colour) in an area: its bounds in screen pixels.
    std::optional<Rect> ink(const Rect& area);

    /// Selects from the left side of one character cell to the right side of another.
    void drag(const Rect& from, const Rect& to);

    void saveScreenshot(const std::string& name);

  private:
    /// An element and where a text in it begins, if it tells.
    struct Look {
        AccessibilityElement::Pointer element;
        std::optional<Rect> cell;
    };

    /// Nothing where the element does not show the text.
    static Look look(const std::string& text, const AccessibilityElement::Pointer& element);

    struct Backend;
    std::unique_ptr<VirtualDesktop> desktop_;
    std::unique_ptr<Backend> backend_;
    ChildProcess* program_ = nullptr;
    VirtualDesktop::Window window_{};
    std::map<std::string, Look> looks_;  ///< The last ones, to look there first.
};

/// The UTF-16 position of a text in an element's value; −1 where it is not.
std::int64_t positionIn(const AccessibilityElement& element, const std::string& text);

/// The element's characters in this range, as text.
std::string stringAt(const AccessibilityElement& element, std::int64_t location,
                     std::int64_t length);

}  // namespace velmora::test
