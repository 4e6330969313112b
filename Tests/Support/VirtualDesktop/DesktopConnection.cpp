// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/DesktopConnection.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <poll.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace velmora::test {

namespace {

/// Windows vanish between two requests; that is no reason to end the test program.
int ignoreError(Display*, XErrorEvent*) {
    return 0;
}

}  // namespace

struct DesktopConnection::Connection {
    Display* display = nullptr;
    ::Window root = 0;

    Atom atom(const char* name) const { return XInternAtom(display, name, False); }

    std::string bytes(::Window window, Atom property) const {
        Atom type = 0;
        int format = 0;
        unsigned long count = 0;
        unsigned long rest = 0;
        unsigned char* data = nullptr;
        std::string result;
        if (XGetWindowProperty(display, window, property, 0, 4096, False, AnyPropertyType, &type,
                               &format, &count, &rest, &data) == Success &&
            data != nullptr) {
            const std::size_t unit = format == 32 ? sizeof(long) : format == 16 ? 2 : 1;
            result.assign(reinterpret_cast<const char*>(data), count * unit);
            XFree(data);
        }
        return result;
    }

    std::optional<long> number(::Window window, Atom property) const {
        const std::string data = bytes(window, property);
        if (data.size() < sizeof(long)) {
            return std::nullopt;
        }
        return *reinterpret_cast<const long*>(data.data());
    }

    std::vector<::Window> children(::Window window) const {
        ::Window rootReturn = 0;
        ::Window parent = 0;
        ::Window* list = nullptr;
        unsigned count = 0;
        std::vector<::Window> result;
        if (XQueryTree(display, window, &rootReturn, &parent, &list, &count) != 0 &&
            list != nullptr) {
            result.assign(list, list + count);
            XFree(list);
        }
        return result;
    }

    /// The window itself or, inside the window manager's frame, the program's own.
    ::Window programWindow(::Window window, int depth) const {
        if (number(window, atom("_NET_WM_PID")) || !bytes(window, XA_WM_CLASS).empty()) {
            return window;
        }
        if (depth > 0) {
            for (const ::Window child : children(window)) {
                if (const ::Window found = programWindow(child, depth - 1)) {
                    return found;
                }
            }
        }
        return 0;
    }

    std::optional<VirtualDesktop::Window> describe(::Window top) const {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(display, top, &attributes) == 0 ||
            attributes.map_state != IsViewable || attributes.c_class == InputOnly) {
            return std::nullopt;
        }
        const ::Window window = programWindow(top, 3);
        XWindowAttributes inner;
        ::Window child = 0;
        int x = 0;
        int y = 0;
        if (window == 0 || XGetWindowAttributes(display, window, &inner) == 0 ||
            inner.map_state != IsViewable ||
            XTranslateCoordinates(display, window, root, 0, 0, &x, &y, &child) == 0) {
            return std::nullopt;
        }
        std::string title = bytes(window, atom("_NET_WM_NAME"));
        if (title.empty()) {
            title = bytes(window, XA_WM_NAME);
        }
        return VirtualDesktop::Window{
            window,
            static_cast<pid_t>(number(window, atom("_NET_WM_PID")).value_or(-1)),
            title,
            {double(x), double(y), double(inner.width), double(inner.height)},
            attributes.override_redirect != 0};
    }

    void message(::Window window, const char* type, const long (&data)[5]) const {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = window;
        event.xclient.message_type = atom(type);
        event.xclient.format = 32;
        std::copy(std::begin(data), std::end(data), event.xclient.data.l);
        XSendEvent(display, root, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
        XFlush(display);
    }
};

DesktopConnection::DesktopConnection(const std::string& display)
    : connection_(std::make_unique<Connection>()) {
    XSetErrorHandler(ignoreError);
    connection_->display = XOpenDisplay(display.c_str());
    if (connection_->display == nullptr) {
        throw std::runtime_error("the X server " + display + " does not answer");
    }
    connection_->root = DefaultRootWindow(connection_->display);
    XSelectInput(connection_->display, connection_->root,
                 SubstructureNotifyMask | PropertyChangeMask);
    XFlush(connection_->display);
}

DesktopConnection::~DesktopConnection() {
    XCloseDisplay(connection_->display);
}

std::vector<VirtualDesktop::Window> DesktopConnection::windows() const {
    std::vector<VirtualDesktop::Window> result;
    for (const ::Window top : connection_->children(connection_->root)) {
        if (std::optional<VirtualDesktop::Window> window = connection_->describe(top)) {
            result.push_back(std::move(*window));
        }
    }
    return result;
}

bool DesktopConnection::windowManagerIsThere() const {
    const auto check =
        connection_->number(connection_->root, connection_->atom("_NET_SUPPORTING_WM_CHECK"));
    return check.value_or(0) != 0;
}

std::uint64_t DesktopConnection::openWindow() const {
    Display* const display = connection_->display;
    const ::Window window = XCreateSimpleWindow(display, connection_->root, 0, 0, 20, 20, 0, 0, 0);
    XMapWindow(display, window);
    XSync(display, False);
    return window;
}

void DesktopConnection::closeWindow(std::uint64_t window) const {
    XDestroyWindow(connection_->display, window);
    XSync(connection_->display, False);
}

bool DesktopConnection::focusIsHeldByAnotherThan(std::uint64_t window) const {
    const std::uint64_t focused = focusedWindow();
    return focused != window && focused != None && focused != PointerRoot;
}

bool DesktopConnection::holdsFocus(std::uint64_t window) const {
    constexpr int levels = 8;
    ::Window each = focusedWindow();
    for (int level = 0; level < levels && each != window && each > PointerRoot; ++level) {
        ::Window root = 0;
        ::Window parent = 0;
        ::Window* list = nullptr;
        unsigned count = 0;
        if (XQueryTree(connection_->display, each, &root, &parent, &list, &count) == 0) {
            return false;
        }
        if (list != nullptr) {
            XFree(list);
        }
        each = parent;
    }
    return each == window;
}

std::uint64_t DesktopConnection::focusedWindow() const {
    ::Window window = 0;
    int revert = 0;
    XGetInputFocus(connection_->display, &window, &revert);
    return window;
}

void DesktopConnection::awaitEvent(std::chrono::milliseconds timeout) const {
    if (XPending(connection_->display) == 0) {
        pollfd waiting{ConnectionNumber(connection_->display), POLLIN, 0};
        poll(&waiting, 1, static_cast<int>(timeout.count()));
    }
    while (XPending(connection_->display) > 0) {
        XEvent event;
        XNextEvent(connection_->display, &event);
    }
}

void DesktopConnection::placeWindow(std::uint64_t window, const Rect& client) const {
    // A maximised window does not move: removed (0) are both directions of that state.
    connection_->message(
        window, "_NET_WM_STATE",
        {0, static_cast<long>(connection_->atom("_NET_WM_STATE_MAXIMIZED_VERT")),
         static_cast<long>(connection_->atom("_NET_WM_STATE_MAXIMIZED_HORZ")), 2, 0});
    // Static gravity (10): the place is that of the program's own window, without the frame.
    const long flags = 10 | (0xFL << 8) | (2L << 12);
    connection_->message(window, "_NET_MOVERESIZE_WINDOW",
                         {flags, std::lround(client.x), std::lround(client.y),
                          std::lround(client.width), std::lround(client.height)});
}

void DesktopConnection::activateWindow(std::uint64_t window) const {
    connection_->message(window, "_NET_ACTIVE_WINDOW", {2, CurrentTime, 0, 0, 0});
}

void DesktopConnection::movePointer(int x, int y) const {
    XTestFakeMotionEvent(connection_->display, -1, x, y, CurrentTime);
    XSync(connection_->display, False);
}

void DesktopConnection::movePointerBy(int dx, int dy) const {
    XTestFakeRelativeMotionEvent(connection_->display, dx, dy, CurrentTime);
    XSync(connection_->display, False);
}

void DesktopConnection::button(unsigned number, bool down) const {
    XTestFakeButtonEvent(connection_->display, number, down ? True : False, CurrentTime);
    XSync(connection_->display, False);
}

void DesktopConnection::key(const std::string& keysym, bool down) const {
    const KeySym symbol = XStringToKeysym(keysym.c_str());
    const KeyCode code = symbol == NoSymbol ? 0 : XKeysymToKeycode(connection_->display, symbol);
    if (code == 0) {
        throw std::runtime_error("no key gives " + keysym);
    }
    XTestFakeKeyEvent(connection_->display, code, down ? True : False, CurrentTime);
    XSync(connection_->display, False);
}

Image DesktopConnection::capture(const Rect& area) const {
    const Rect screen{0, 0, double(DisplayWidth(connection_->display, 0)),
                      double(DisplayHeight(connection_->display, 0))};
    const Rect part = area.integral().intersection(screen);
    if (part.isEmpty()) {
        return {};
    }
    XImage* image = XGetImage(connection_->display, connection_->root, int(part.x), int(part.y),
                              unsigned(part.width), unsigned(part.height), AllPlanes, ZPixmap);
    if (image == nullptr) {
        return {};
    }
    std::vector<std::uint32_t> pixels;
    pixels.reserve(std::size_t(image->width) * std::size_t(image->height));
    for (int y = 0; y < image->height; ++y) {
        for (int x = 0; x < image->width; ++x) {
            pixels.push_back(0xFF000000U | std::uint32_t(XGetPixel(image, x, y) & 0xFFFFFFU));
        }
    }
    Image result(image->width, image->height, std::move(pixels));
    XDestroyImage(image);
    return result;
}

}  // namespace velmora::test
