// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/TrayIconPainter.h"

#include <QImage>
#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace velmora {
namespace {

constexpr std::uint8_t iconDepth = 32;
constexpr int largestSide = 256;  // One request carries it.

/// The smallest picture that is no smaller than wanted; the largest where all are.
const StatusIconPixmap* bestOf(const std::vector<StatusIconPixmap>& icon, int side) {
    const StatusIconPixmap* best = nullptr;
    for (const StatusIconPixmap& candidate : icon) {
        const bool isEnough = candidate.width >= side;
        const bool bestIsEnough = best != nullptr && best->width >= side;
        if (best == nullptr || (isEnough && (!bestIsEnough || candidate.width < best->width)) ||
            (!isEnough && !bestIsEnough && candidate.width > best->width)) {
            best = &candidate;
        }
    }
    return best;
}

std::uint32_t swapped(std::uint32_t value) {
    return value << 24U | (value & 0xFF00U) << 8U | (value >> 8U & 0xFF00U) | value >> 24U;
}

}  // namespace

TrayIconPainter::TrayIconPainter(X11Connection& connection, std::vector<StatusIconPixmap> icon)
    : connection_(connection), formats_(connection), icon_(std::move(icon)) {}

std::vector<std::uint32_t> TrayIconPainter::pixels(int side) const {
    const StatusIconPixmap* const best = bestOf(icon_, side);
    if (best == nullptr) {
        return {};
    }
    const QImage image = QImage(reinterpret_cast<const uchar*>(best->pixels.data()), best->width,
                                best->height, QImage::Format_ARGB32)
                             .convertToFormat(QImage::Format_ARGB32_Premultiplied)
                             .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    std::vector<std::uint32_t> result;
    for (int y = 0; y < side; ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        result.insert(result.end(), row, row + side);
    }
    const bool serverIsLittle =
        xcb_get_setup(connection_.get())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (serverIsLittle != (std::endian::native == std::endian::little)) {
        std::ranges::transform(result, result.begin(), swapped);
    }
    return result;
}

void TrayIconPainter::paint(xcb_window_t window, xcb_visualid_t visual, int width, int height) {
    xcb_connection_t* const c = connection_.get();
    xcb_clear_area(c, 0, window, 0, 0, 0, 0);
    const auto target = formats_.ofVisual(visual);
    const auto source = formats_.argb32();
    const int side = std::min({width, height, largestSide});
    const auto image = side > 0 ? pixels(side) : std::vector<std::uint32_t>();
    if (!target || !source || image.empty()) {
        xcb_flush(c);
        return;
    }
    const auto size = static_cast<std::uint16_t>(side);
    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    xcb_create_pixmap(c, iconDepth, pixmap, connection_.root(), size, size);
    const xcb_gcontext_t context = xcb_generate_id(c);
    xcb_create_gc(c, context, pixmap, 0, nullptr);
    xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, size, size, 0, 0, 0, iconDepth,
                  static_cast<std::uint32_t>(image.size() * sizeof(std::uint32_t)),
                  reinterpret_cast<const std::uint8_t*>(image.data()));
    const xcb_render_picture_t from = xcb_generate_id(c);
    const xcb_render_picture_t to = xcb_generate_id(c);
    xcb_render_create_picture(c, from, pixmap, *source, 0, nullptr);
    xcb_render_create_picture(c, to, window, target->id, 0, nullptr);
    xcb_render_composite(c, XCB_RENDER_PICT_OP_OVER, from, XCB_NONE, to, 0, 0, 0, 0,
                         static_cast<std::int16_t>((width - side) / 2),
                         static_cast<std::int16_t>((height - side) / 2), size, size);
    xcb_render_free_picture(c, to);
    xcb_render_free_picture(c, from);
    xcb_free_gc(c, context);
    xcb_free_pixmap(c, pixmap);
    xcb_flush(c);
}

}  // namespace velmora
