// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <string>

namespace velmora::testing {

/// A panel with a tray that embeds icons: takes the display's tray selection and puts whatever asks
/// for it into its window, one beside the other. Its events are handled whenever it is asked.
class TestTray {
  public:
    static constexpr int left = 100;
    static constexpr int side = 30;  ///< Of each icon, pixels.

    struct Options {
        int top = 0;
        bool translucent = false;  ///< Offers the visual with an alpha channel to icons.
        std::uint32_t background = 0xFF204060;
    };

    TestTray(const std::string& display, const Options& options);
    /// As a panel that crashes: everything of it is gone at once.
    ~TestTray();
    TestTray(const TestTray&) = delete;
    TestTray& operator=(const TestTray&) = delete;

    /// The icon that is embedded now and mapped; none where it is 0.
    xcb_window_t icon();

    /// A property of it as text.
    std::string iconText(const char* property);

    /// The pixel of the screen at this point, 0xRRGGBB.
    std::uint32_t pixel(int x, int y);

  private:
    void handleEvents();
    void embed(xcb_window_t window);
    xcb_atom_t atom(const std::string& name);

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

}  // namespace velmora::testing
