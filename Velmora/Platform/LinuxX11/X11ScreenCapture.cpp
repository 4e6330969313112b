// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"

#include <xcb/composite.h>
#include <xcb/shape.h>
#include <xcb/xfixes.h>

#include "Velmora/Platform/LinuxX11/X11Canvas.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"
#include "Velmora/Platform/LinuxX11/X11PictureFormats.h"
#include "Velmora/Platform/LinuxX11/X11PixelReader.h"
#include "Velmora/Platform/LinuxX11/X11WindowPictures.h"

namespace velmora {
namespace {

constexpr double pixelLimit = 64.0 * 1024 * 1024;

bool hasWhatItTakes(X11Connection& connection) {
    if (!connection.hasExtension(xcb_composite_id) || !connection.hasExtension(xcb_render_id) ||
        !connection.hasExtension(xcb_xfixes_id) || !connection.hasExtension(xcb_shape_id)) {
        return false;
    }
    xcb_connection_t* const c = connection.get();
    // Regions of windows as clips came with version 2; the server refuses what was not asked for.
    const auto fixes =
        xcbOwned(xcb_xfixes_query_version_reply(c, xcb_xfixes_query_version(c, 2, 0), nullptr));
    if (!fixes || fixes->major_version < 2) {
        return false;
    }
    // From version 0.2 on a window's picture can be asked for.
    const auto version = xcbOwned(
        xcb_composite_query_version_reply(c, xcb_composite_query_version(c, 0, 4), nullptr));
    return version && (version->major_version > 0 || version->minor_version >= 2);
}

}  // namespace

struct X11ScreenCapture::Parts {
    Parts(const X11ClientRange& application, const std::string& display)
        : connection(display),
          isPossible(hasWhatItTakes(connection)),
          formats(connection),
          ownership(connection, application),
          windows(connection, ownership, formats),
          reader(connection) {
        if (isPossible) {
            xcb_composite_redirect_subwindows(connection.get(), connection.root(),
                                              XCB_COMPOSITE_REDIRECT_AUTOMATIC);
            xcb_flush(connection.get());
        }
    }

    std::optional<Image> capture(const Rect& native);

    X11Connection connection;
    bool isPossible;
    X11PictureFormats formats;
    X11Ownership ownership;
    X11WindowPictures windows;
    X11PixelReader reader;
};

std::optional<Image> X11ScreenCapture::Parts::capture(const Rect& native) {
    connection.discardEvents();
    const std::vector<X11WindowPicture> shown = windows.take(native);
    std::optional<Image> image;
    {
        X11Canvas canvas(connection, formats, native);
        if (shown.empty() || !shown.front().coversAll) {
            canvas.drawBackground();
        }
        for (const X11WindowPicture& window : shown) {
            canvas.draw(window);
        }
        image = reader.read(canvas.pixmap(), static_cast<int>(native.width),
                            static_cast<int>(native.height));
    }
    windows.giveBack(shown);
    return image;
}

X11ScreenCapture::X11ScreenCapture(const ScreenGeometrySource& geometry,
                                   const X11ClientRange& application, const std::string& display)
    : geometry_(geometry), parts_(std::make_unique<Parts>(application, display)) {}

X11ScreenCapture::~X11ScreenCapture() = default;

bool X11ScreenCapture::isPossible(const std::string& display) {
    X11Connection connection(display);
    return hasWhatItTakes(connection) && X11PictureFormats(connection).argb32().has_value();
}

std::vector<Display> X11ScreenCapture::displays() {
    return geometry_.current().displays();
}

std::optional<Image> X11ScreenCapture::capture(std::uint64_t displayId, const Rect& rect) {
    const Rect native = geometry_.current().nativePixelsOfDisplay(displayId, rect);
    if (!parts_->isPossible || !parts_->formats.argb32() || !parts_->connection.isOpen() ||
        native.isEmpty() || native.width * native.height > pixelLimit) {
        return std::nullopt;
    }
    return parts_->capture(native);
}

}  // namespace velmora
