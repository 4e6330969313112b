// SPDX-License-Identifier: MIT
#pragma once

#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <cstddef>
#include <optional>

#include "Velmora/Platform/Image.h"
#include "Velmora/Platform/LinuxX11/X11Connection.h"

namespace velmora {

/// Fetches pixels from the server: through shared memory where both are on one machine, over the
/// connection otherwise. Memory for large pictures is given back at once.
class X11PixelReader {
  public:
    explicit X11PixelReader(X11Connection& connection);
    ~X11PixelReader();
    X11PixelReader(const X11PixelReader&) = delete;
    X11PixelReader& operator=(const X11PixelReader&) = delete;

    /// A pixmap of depth 32, whole, made opaque; nothing where it cannot be fetched.
    std::optional<Image> read(xcb_pixmap_t pixmap, int width, int height);

  private:
    bool reserve(std::size_t bytes);
    void release();
    std::optional<Image> readShared(xcb_pixmap_t pixmap, int width, int height);
    std::optional<Image> readSent(xcb_pixmap_t pixmap, int width, int height);
    Image opaqueImage(const void* bytes, int width, int height) const;

    X11Connection& connection_;
    bool canShare_ = false;
    bool otherByteOrder_ = false;
    xcb_shm_seg_t segment_ = 0;
    void* memory_ = nullptr;
    std::size_t size_ = 0;
};

}  // namespace velmora
