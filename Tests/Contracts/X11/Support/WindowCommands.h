// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <sstream>
#include <string>

namespace velmora::test {

/// Makes and changes plain windows over one X connection as lines of text tell it. Numbers are
/// decimal, colours 0xAARRGGBB in decimal, coordinates native pixels. Every command is finished on
/// the server when its answer is there.
///
///     window PARENT X Y WIDTH HEIGHT DEPTH BORDER OVERRIDE COLOUR   → its id, mapped
///     fill ID X Y WIDTH HEIGHT COLOUR
///     shape ID KIND X Y WIDTH HEIGHT     (kind 0 bounding, 2 input; width 0 for nothing)
///     property ID NAME TYPE VALUE…       (32-bit values; TYPE an atom's name)
///     atoms ID NAME ATOM…                (atoms by name)
///     unproperty ID NAME
///     map|unmap|raise|destroy ID
///     move ID X Y WIDTH HEIGHT
///     background COLOUR PROPERTY         (a pixmap for the root, announced where PROPERTY is 1)
///     grab ID                            (pointer and keyboard)
///     ungrab
///     own SELECTION                      (a selection of that name)
///     disown SELECTION
///     focus ID
///     base                               → the base of this connection's identifiers
class WindowCommands {
  public:
    explicit WindowCommands(const std::string& display);
    ~WindowCommands();
    WindowCommands(const WindowCommands&) = delete;
    WindowCommands& operator=(const WindowCommands&) = delete;

    std::string run(const std::string& line);

  private:
    std::string perform(const std::string& command, std::istringstream& arguments);
    std::string window(std::istringstream& arguments);
    void fill(std::istringstream& arguments);
    void shape(std::istringstream& arguments);
    void property(std::istringstream& arguments, bool ofAtoms);
    void move(std::istringstream& arguments);
    void background(std::istringstream& arguments);
    void selection(const std::string& command, std::istringstream& arguments);
    void single(const std::string& command, xcb_window_t id);
    void grab(xcb_window_t id);
    void ungrab();
    void paint(xcb_drawable_t target, std::uint8_t depth, std::uint32_t colour,
               xcb_rectangle_t area);
    xcb_atom_t atom(const std::string& name);
    xcb_visualid_t visualOfDepth(std::uint8_t depth) const;
    void finish();

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
    std::map<xcb_window_t, std::uint8_t> depths_;
    xcb_window_t selectionOwner_ = XCB_WINDOW_NONE;
};

}  // namespace velmora::test
