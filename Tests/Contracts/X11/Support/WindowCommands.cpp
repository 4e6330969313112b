// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/Support/WindowCommands.h"

#include <xcb/shape.h>

#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace velmora::test {
namespace {

template <typename Number>
Number next(std::istringstream& arguments) {
    long long value = 0;
    if (!(arguments >> value)) {
        throw std::runtime_error("a number is missing");
    }
    return static_cast<Number>(value);
}

std::string nextWord(std::istringstream& arguments) {
    std::string word;
    if (!(arguments >> word)) {
        throw std::runtime_error("a word is missing");
    }
    return word;
}

xcb_rectangle_t nextRectangle(std::istringstream& arguments) {
    xcb_rectangle_t rectangle{};
    rectangle.x = next<std::int16_t>(arguments);
    rectangle.y = next<std::int16_t>(arguments);
    rectangle.width = next<std::uint16_t>(arguments);
    rectangle.height = next<std::uint16_t>(arguments);
    return rectangle;
}

}  // namespace

WindowCommands::WindowCommands(const std::string& display)
    : connection_(xcb_connect(display.empty() ? nullptr : display.c_str(), nullptr)),
      screen_(nullptr) {
    if (xcb_connection_has_error(connection_) != 0) {
        throw std::runtime_error("no X server at " + display);
    }
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

WindowCommands::~WindowCommands() {
    xcb_disconnect(connection_);
}

std::string WindowCommands::run(const std::string& line) {
    std::istringstream arguments(line);
    try {
        const std::string command = nextWord(arguments);
        const std::string answer = perform(command, arguments);
        finish();
        return answer;
    } catch (const std::runtime_error& error) {
        return std::string("error: ") + error.what() + " in: " + line;
    }
}

std::string WindowCommands::perform(const std::string& command, std::istringstream& arguments) {
    if (command == "window") {
        return window(arguments);
    }
    if (command == "base") {
        return std::to_string(xcb_get_setup(connection_)->resource_id_base);
    }
    if (command == "fill") {
        fill(arguments);
    } else if (command == "shape") {
        shape(arguments);
    } else if (command == "property" || command == "atoms") {
        property(arguments, command == "atoms");
    } else if (command == "unproperty") {
        const auto id = next<xcb_window_t>(arguments);
        xcb_delete_property(connection_, id, atom(nextWord(arguments)));
    } else if (command == "move") {
        move(arguments);
    } else if (command == "background") {
        background(arguments);
    } else if (command == "own" || command == "disown") {
        selection(command, arguments);
    } else if (command == "ungrab") {
        ungrab();
    } else {
        single(command, next<xcb_window_t>(arguments));
    }
    return "ok";
}

void WindowCommands::single(const std::string& command, xcb_window_t id) {
    if (command == "map") {
        xcb_map_window(connection_, id);
    } else if (command == "unmap") {
        xcb_unmap_window(connection_, id);
    } else if (command == "destroy") {
        xcb_destroy_window(connection_, id);
    } else if (command == "raise") {
        const std::uint32_t above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(connection_, id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    } else if (command == "grab") {
        grab(id);
    } else if (command == "focus") {
        xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, id, XCB_CURRENT_TIME);
    } else {
        throw std::runtime_error("unknown command");
    }
}

xcb_visualid_t WindowCommands::visualOfDepth(std::uint8_t depth) const {
    if (depth == screen_->root_depth) {
        return screen_->root_visual;
    }
    for (auto depths = xcb_screen_allowed_depths_iterator(screen_); depths.rem > 0;
         xcb_depth_next(&depths)) {
        const auto visuals = xcb_depth_visuals_iterator(depths.data);
        if (depths.data->depth == depth && visuals.rem > 0) {
            return visuals.data->visual_id;
        }
    }
    throw std::runtime_error("no visual of that depth");
}

std::string WindowCommands::window(std::istringstream& arguments) {
    auto parent = next<xcb_window_t>(arguments);
    const xcb_rectangle_t area = nextRectangle(arguments);
    const auto depth = next<std::uint8_t>(arguments);
    const auto border = next<std::uint16_t>(arguments);
    const auto overrideRedirect = next<std::uint32_t>(arguments);
    const auto colour = next<std::uint32_t>(arguments);
    const xcb_visualid_t visual = visualOfDepth(depth);
    const std::uint32_t colourMap = xcb_generate_id(connection_);
    xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colourMap, screen_->root, visual);
    const xcb_window_t id = xcb_generate_id(connection_);
    // The border is green, so that a test sees it.
    const std::uint32_t values[] = {colour, 0xFF00FF00U, overrideRedirect, XCB_EVENT_MASK_EXPOSURE,
                                    colourMap};
    xcb_create_window(connection_, depth, id, parent == XCB_WINDOW_NONE ? screen_->root : parent,
                      area.x, area.y, area.width, area.height, border,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                          XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                      values);
    depths_[id] = depth;
    xcb_map_window(connection_, id);
    xcb_flush(connection_);
    // A window manager takes a moment; without one the event is there at once.
    while (xcb_generic_event_t* event = xcb_wait_for_event(connection_)) {
        const bool exposed = (event->response_type & 0x7F) == XCB_EXPOSE &&
                             reinterpret_cast<const xcb_expose_event_t*>(event)->window == id;
        std::free(event);
        if (exposed) {
            break;
        }
    }
    return std::to_string(id);
}

void WindowCommands::paint(xcb_drawable_t target, std::uint8_t, std::uint32_t colour,
                           xcb_rectangle_t area) {
    const xcb_gcontext_t context = xcb_generate_id(connection_);
    xcb_create_gc(connection_, context, target, XCB_GC_FOREGROUND, &colour);
    xcb_poly_fill_rectangle(connection_, target, context, 1, &area);
    xcb_free_gc(connection_, context);
}

void WindowCommands::fill(std::istringstream& arguments) {
    const auto id = next<xcb_window_t>(arguments);
    const xcb_rectangle_t area = nextRectangle(arguments);
    paint(id, depths_[id], next<std::uint32_t>(arguments), area);
}

void WindowCommands::shape(std::istringstream& arguments) {
    const auto id = next<xcb_window_t>(arguments);
    const auto kind = next<xcb_shape_kind_t>(arguments);
    const xcb_rectangle_t area = nextRectangle(arguments);
    xcb_shape_rectangles(connection_, XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_UNSORTED, id, 0, 0,
                         area.width > 0 ? 1 : 0, &area);
}

void WindowCommands::property(std::istringstream& arguments, bool ofAtoms) {
    const auto id = next<xcb_window_t>(arguments);
    const xcb_atom_t name = atom(nextWord(arguments));
    const xcb_atom_t type =
        ofAtoms ? static_cast<xcb_atom_t>(XCB_ATOM_ATOM) : atom(nextWord(arguments));
    std::vector<std::uint32_t> values;
    for (std::string word; arguments >> word;) {
        values.push_back(
            ofAtoms ? atom(word)
                    : static_cast<std::uint32_t>(std::strtoull(word.c_str(), nullptr, 10)));
    }
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, id == 0 ? screen_->root : id, name,
                        type, 32, static_cast<std::uint32_t>(values.size()), values.data());
}

void WindowCommands::move(std::istringstream& arguments) {
    const auto id = next<xcb_window_t>(arguments);
    const xcb_rectangle_t area = nextRectangle(arguments);
    const std::uint32_t values[] = {static_cast<std::uint32_t>(area.x),
                                    static_cast<std::uint32_t>(area.y), area.width, area.height};
    xcb_configure_window(connection_, id,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values);
}

void WindowCommands::background(std::istringstream& arguments) {
    const auto colour = next<std::uint32_t>(arguments);
    const bool announced = next<int>(arguments) != 0;
    // Small on purpose: the root repeats it.
    const xcb_rectangle_t tile = {0, 0, 64, 64};
    const xcb_pixmap_t pixmap = xcb_generate_id(connection_);
    xcb_create_pixmap(connection_, screen_->root_depth, pixmap, screen_->root, tile.width,
                      tile.height);
    paint(pixmap, screen_->root_depth, colour, tile);
    xcb_change_window_attributes(connection_, screen_->root, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection_, 0, screen_->root, 0, 0, 0, 0);
    if (announced) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, screen_->root,
                            atom("_XROOTPMAP_ID"), XCB_ATOM_PIXMAP, 32, 1, &pixmap);
    }
}

void WindowCommands::selection(const std::string& command, std::istringstream& arguments) {
    if (selectionOwner_ == XCB_WINDOW_NONE) {
        selectionOwner_ = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, selectionOwner_, screen_->root, -1, -1,
                          1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    xcb_set_selection_owner(
        connection_,
        command == "own" ? selectionOwner_ : static_cast<xcb_window_t>(XCB_WINDOW_NONE),
        atom(nextWord(arguments)), XCB_CURRENT_TIME);
}

void WindowCommands::grab(xcb_window_t id) {
    const auto pointer =
        xcb_grab_pointer(connection_, 0, id, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const auto keyboard = xcb_grab_keyboard(connection_, 0, id, XCB_CURRENT_TIME,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    auto* first = xcb_grab_pointer_reply(connection_, pointer, nullptr);
    auto* second = xcb_grab_keyboard_reply(connection_, keyboard, nullptr);
    const bool done = first != nullptr && first->status == XCB_GRAB_STATUS_SUCCESS &&
                      second != nullptr && second->status == XCB_GRAB_STATUS_SUCCESS;
    std::free(first);
    std::free(second);
    if (!done) {
        throw std::runtime_error("no grab");
    }
}

void WindowCommands::ungrab() {
    xcb_ungrab_pointer(connection_, XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
}

xcb_atom_t WindowCommands::atom(const std::string& name) {
    auto* reply = xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr);
    if (reply == nullptr) {
        throw std::runtime_error("no atom");
    }
    const xcb_atom_t result = reply->atom;
    std::free(reply);
    return result;
}

void WindowCommands::finish() {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    while (xcb_generic_event_t* event = xcb_poll_for_event(connection_)) {
        const bool failed = event->response_type == 0;
        const int code = reinterpret_cast<xcb_generic_error_t*>(event)->error_code;
        std::free(event);
        if (failed) {
            throw std::runtime_error("the server answered with error " + std::to_string(code));
        }
    }
}

}  // namespace velmora::test
