// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Canvas.h"

#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace velmora {
namespace {

constexpr std::uint8_t canvasDepth = 32;

std::int16_t coordinate(int value) {
    return static_cast<std::int16_t>(value);
}

}  // namespace

X11Canvas::X11Canvas(X11Connection& connection, const X11PictureFormats& formats, const Rect& area)
    : connection_(connection),
      formats_(formats),
      left_(static_cast<int>(area.x)),
      top_(static_cast<int>(area.y)),
      width_(static_cast<std::uint16_t>(area.width)),
      height_(static_cast<std::uint16_t>(area.height)),
      pixmap_(xcb_generate_id(connection.get())),
      picture_(xcb_generate_id(connection.get())) {
    xcb_connection_t* const c = connection_.get();
    xcb_create_pixmap(c, canvasDepth, pixmap_, connection_.root(), width_, height_);
    xcb_render_create_picture(c, picture_, pixmap_, formats_.argb32().value_or(0), 0, nullptr);
    const xcb_render_color_t black = {0, 0, 0, 0xFFFF};
    const xcb_rectangle_t whole = {0, 0, width_, height_};
    xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_SRC, picture_, black, 1, &whole);
}

X11Canvas::~X11Canvas() {
    xcb_render_free_picture(connection_.get(), picture_);
    xcb_free_pixmap(connection_.get(), pixmap_);
}

xcb_pixmap_t X11Canvas::announcedBackground() {
    xcb_connection_t* const c = connection_.get();
    for (const char* name : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"}) {
        const auto value =
            connection_.property(connection_.root(), connection_.atom(name), XCB_ATOM_PIXMAP, 1);
        if (value.empty() || value[0] == XCB_NONE) {
            continue;
        }
        // Whoever announced it may have taken it away since.
        const auto size =
            xcbOwned(xcb_get_geometry_reply(c, xcb_get_geometry(c, value[0]), nullptr));
        if (size && size->depth == connection_.screen().root_depth) {
            return value[0];
        }
    }
    return XCB_NONE;
}

void X11Canvas::drawBackground() {
    const xcb_pixmap_t announced = announcedBackground();
    if (announced != XCB_NONE) {
        drawRootPixels(announced, left_, top_, true);
    } else {
        drawVisibleRoot();
    }
}

void X11Canvas::drawVisibleRoot() {
    xcb_connection_t* const c = connection_.get();
    const xcb_pixmap_t copy = xcb_generate_id(c);
    xcb_create_pixmap(c, connection_.screen().root_depth, copy, connection_.root(), width_,
                      height_);
    const xcb_gcontext_t context = xcb_generate_id(c);
    const std::uint32_t values[] = {connection_.screen().black_pixel,
                                    XCB_SUBWINDOW_MODE_CLIP_BY_CHILDREN, 0};
    xcb_create_gc(c, context, connection_.root(),
                  XCB_GC_FOREGROUND | XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
    const xcb_rectangle_t whole = {0, 0, width_, height_};
    xcb_poly_fill_rectangle(c, copy, context, 1, &whole);
    // Copies only where no window is.
    xcb_copy_area(c, connection_.root(), copy, context, coordinate(left_), coordinate(top_), 0, 0,
                  width_, height_);
    drawRootPixels(copy, 0, 0, false);
    xcb_free_gc(c, context);
    xcb_free_pixmap(c, copy);
}

void X11Canvas::drawRootPixels(xcb_drawable_t source, int x, int y, bool repeated) {
    const auto format = formats_.ofVisual(connection_.screen().root_visual);
    if (!format) {
        return;
    }
    xcb_connection_t* const c = connection_.get();
    const xcb_render_picture_t from = xcb_generate_id(c);
    const std::uint32_t repeat = repeated ? XCB_RENDER_REPEAT_NORMAL : XCB_RENDER_REPEAT_NONE;
    xcb_render_create_picture(c, from, source, format->id, XCB_RENDER_CP_REPEAT, &repeat);
    xcb_render_composite(c, XCB_RENDER_PICT_OP_SRC, from, XCB_NONE, picture_, coordinate(x),
                         coordinate(y), 0, 0, 0, 0, width_, height_);
    xcb_render_free_picture(c, from);
}

void X11Canvas::draw(const X11WindowPicture& picture) {
    xcb_connection_t* const c = connection_.get();
    const X11TopLevel& window = picture.window;
    const xcb_render_picture_t from = xcb_generate_id(c);
    xcb_render_create_picture(c, from, picture.pixmap, picture.format.id, 0, nullptr);
    // Outside its shape a window shows nothing, whatever its picture holds there. Shapes count
    // from the corner inside the border.
    const xcb_xfixes_region_t shape = xcb_generate_id(c);
    xcb_xfixes_create_region_from_window(c, shape, window.id, XCB_SHAPE_SK_BOUNDING);
    xcb_xfixes_set_picture_clip_region(c, picture_, shape,
                                       coordinate(window.x + window.border - left_),
                                       coordinate(window.y + window.border - top_));
    xcb_render_picture_t strength = XCB_NONE;
    if (picture.opacity != X11Opacity::opaque) {
        strength = xcb_generate_id(c);
        xcb_render_create_solid_fill(c, strength,
                                     {0, 0, 0, static_cast<std::uint16_t>(picture.opacity >> 16U)});
    }
    xcb_render_composite(c, picture.isBlended ? XCB_RENDER_PICT_OP_OVER : XCB_RENDER_PICT_OP_SRC,
                         from, strength, picture_, 0, 0, 0, 0, coordinate(window.x - left_),
                         coordinate(window.y - top_), static_cast<std::uint16_t>(window.width),
                         static_cast<std::uint16_t>(window.height));
    if (strength != XCB_NONE) {
        xcb_render_free_picture(c, strength);
    }
    xcb_xfixes_set_picture_clip_region(c, picture_, XCB_NONE, 0, 0);
    xcb_xfixes_destroy_region(c, shape);
    xcb_render_free_picture(c, from);
}

}  // namespace velmora
