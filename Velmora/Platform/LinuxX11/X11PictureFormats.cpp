// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11PictureFormats.h"

#include <set>

namespace velmora {
namespace {

bool isArgb32(const xcb_render_pictforminfo_t& format) {
    const xcb_render_directformat_t& d = format.direct;
    return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == 32 &&
           d.alpha_shift == 24 && d.alpha_mask == 0xFF && d.red_shift == 16 && d.red_mask == 0xFF &&
           d.green_shift == 8 && d.green_mask == 0xFF && d.blue_shift == 0 && d.blue_mask == 0xFF;
}

}  // namespace

X11PictureFormats::X11PictureFormats(X11Connection& connection) {
    if (!connection.hasExtension(xcb_render_id)) {
        return;
    }
    xcb_connection_t* const c = connection.get();
    xcbOwned(xcb_render_query_version_reply(c, xcb_render_query_version(c, 0, 11), nullptr));
    const auto reply =
        xcbOwned(xcb_render_query_pict_formats_reply(c, xcb_render_query_pict_formats(c), nullptr));
    if (!reply) {
        return;
    }
    std::set<xcb_render_pictformat_t> withAlpha;
    auto formats = xcb_render_query_pict_formats_formats_iterator(reply.get());
    for (; formats.rem > 0; xcb_render_pictforminfo_next(&formats)) {
        if (isArgb32(*formats.data)) {
            argb32_ = formats.data->id;
        }
        if (formats.data->direct.alpha_mask != 0) {
            withAlpha.insert(formats.data->id);
        }
    }
    auto screens = xcb_render_query_pict_formats_screens_iterator(reply.get());
    for (; screens.rem > 0; xcb_render_pictscreen_next(&screens)) {
        auto depths = xcb_render_pictscreen_depths_iterator(screens.data);
        for (; depths.rem > 0; xcb_render_pictdepth_next(&depths)) {
            auto visuals = xcb_render_pictdepth_visuals_iterator(depths.data);
            for (; visuals.rem > 0; xcb_render_pictvisual_next(&visuals)) {
                visuals_[visuals.data->visual] = {visuals.data->format,
                                                  withAlpha.count(visuals.data->format) > 0};
            }
        }
    }
}

std::optional<X11PictureFormats::Format> X11PictureFormats::ofVisual(xcb_visualid_t visual) const {
    const auto found = visuals_.find(visual);
    if (found == visuals_.end()) {
        return std::nullopt;
    }
    return found->second;
}

}  // namespace velmora
