// SPDX-License-Identifier: MIT
#include "Tests/Support/HostileProgram/HostileWindow.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <unistd.h>

#include <stdexcept>

namespace velmora::test {

namespace {

Display* asDisplay(void* display) {
    return static_cast<Display*>(display);
}

}  // namespace

HostileWindow::HostileWindow(const std::string& title) {
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr) {
        throw std::runtime_error("no display");
    }
    display_ = display;
    window_ = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 600, 300, 0, 0,
                                  WhitePixel(display, DefaultScreen(display)));
    XStoreName(display, window_, title.c_str());
    const long process = getpid();
    XChangeProperty(display, window_, XInternAtom(display, "_NET_WM_PID", False), XA_CARDINAL, 32,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(&process), 1);
    XMapWindow(display, window_);
    XSync(display, False);
}

HostileWindow::~HostileWindow() {
    XCloseDisplay(asDisplay(display_));
}

std::array<int, 4> HostileWindow::extents() const {
    Display* display = asDisplay(display_);
    XWindowAttributes attributes;
    XGetWindowAttributes(display, window_, &attributes);
    int x = 0;
    int y = 0;
    Window child = 0;
    XTranslateCoordinates(display, window_, DefaultRootWindow(display), 0, 0, &x, &y, &child);
    return {x, y, attributes.width, attributes.height};
}

}  // namespace velmora::test
