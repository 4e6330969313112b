// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11WindowPictures.h"

#include <xcb/composite.h>
#include <xcb/shape.h>

#include <algorithm>
#include <set>

namespace velmora {
namespace {

struct Asked {
    X11WindowPicture picture;
    xcb_void_cookie_t named;
    xcb_shape_query_extents_cookie_t shape;
    xcb_get_property_cookie_t opacity;
    bool isNamed;
};

bool covers(const Rect& frame, const Rect& area) {
    return frame.intersection(area) == area;
}

}  // namespace

X11WindowPictures::X11WindowPictures(X11Connection& connection, X11Ownership& ownership,
                                     const X11PictureFormats& formats)
    : connection_(connection), ownership_(ownership), formats_(formats), opacity_(connection) {}

std::vector<X11TopLevel> X11WindowPictures::candidates(const Rect& area) {
    std::vector<X11TopLevel> windows = x11TopLevels(connection_);
    std::erase_if(windows,
                  [&](const X11TopLevel& window) { return !window.frame().intersects(area); });
    std::vector<xcb_window_t> ids;
    ids.reserve(windows.size());
    for (const X11TopLevel& window : windows) {
        ids.push_back(window.id);
    }
    const std::set<xcb_window_t> ours = ownership_.ourTopLevels(ids);
    std::erase_if(windows, [&](const X11TopLevel& window) { return ours.count(window.id) > 0; });
    return windows;
}

std::vector<X11WindowPicture> X11WindowPictures::take(const Rect& area) {
    xcb_connection_t* const c = connection_.get();
    std::vector<Asked> asked;
    for (const X11TopLevel& window : candidates(area)) {
        const auto format = formats_.ofVisual(window.visual);
        if (format) {
            const xcb_pixmap_t pixmap = xcb_generate_id(c);
            X11WindowPicture picture;
            picture.window = window;
            picture.pixmap = pixmap;
            picture.format = *format;
            asked.push_back(
                {picture, xcb_composite_name_window_pixmap_checked(c, window.id, pixmap),
                 xcb_shape_query_extents(c, window.id), opacity_.ask(window.id), false});
        }
    }
    // Only the compositing manager blends; without one a window's alpha means nothing.
    const bool blends = opacity_.isCompositing();
    // The last answer first, so that all of them are there after one wait.
    for (auto one = asked.rbegin(); one != asked.rend(); ++one) {
        // Fails for windows that went away meanwhile, and for those that are not redirected, like
        // the overlay window that a compositing manager draws on.
        one->isNamed = !xcbOwned(xcb_request_check(c, one->named));
        const auto shape = xcbOwned(xcb_shape_query_extents_reply(c, one->shape, nullptr));
        const std::uint32_t opacity = opacity_.answer(one->opacity);
        one->picture.opacity = blends ? opacity : X11Opacity::opaque;
        one->picture.isBlended =
            blends && (one->picture.format.hasAlpha || one->picture.opacity != X11Opacity::opaque);
        one->picture.coversAll = shape && shape->bounding_shaped == 0 && !one->picture.isBlended &&
                                 covers(one->picture.window.frame(), area);
    }
    std::vector<X11WindowPicture> pictures;
    for (const Asked& one : asked) {
        if (!one.isNamed) {
            continue;
        }
        if (one.picture.coversAll) {
            giveBack(pictures);
            pictures.clear();
        }
        pictures.push_back(one.picture);
    }
    return pictures;
}

void X11WindowPictures::giveBack(const std::vector<X11WindowPicture>& pictures) {
    for (const X11WindowPicture& picture : pictures) {
        xcb_free_pixmap(connection_.get(), picture.pixmap);
    }
    xcb_flush(connection_.get());
}

}  // namespace velmora
