// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11PixelReader.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace velmora {
namespace {

constexpr std::size_t bytesPerPixel = 4;
constexpr std::size_t keptBytes = 4U
                                  << 20U;  // Enough for the captures that are taken all the time.
constexpr std::uint32_t opaque = 0xFF000000;

std::size_t byteCount(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel;
}

std::uint32_t swapped(std::uint32_t v) {
    return (v >> 24U) | ((v >> 8U) & 0xFF00U) | ((v << 8U) & 0xFF0000U) | (v << 24U);
}

}  // namespace

X11PixelReader::X11PixelReader(X11Connection& connection) : connection_(connection) {
    canShare_ = connection_.hasExtension(xcb_shm_id);
    if (connection_.isOpen()) {
        const bool serverIsLittle =
            xcb_get_setup(connection_.get())->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
        otherByteOrder_ = serverIsLittle != (std::endian::native == std::endian::little);
    }
}

X11PixelReader::~X11PixelReader() {
    release();
}

void X11PixelReader::release() {
    if (memory_ == nullptr) {
        return;
    }
    xcb_shm_detach(connection_.get(), segment_);
    xcb_flush(connection_.get());
    shmdt(memory_);
    memory_ = nullptr;
    size_ = 0;
}

bool X11PixelReader::reserve(std::size_t bytes) {
    if (memory_ != nullptr && size_ >= bytes) {
        return true;
    }
    release();
    const int id = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (id < 0) {
        return false;
    }
    void* const memory = shmat(id, nullptr, 0);
    bool isAttached = false;
    // The failure is a number in the place of an address.
    if (reinterpret_cast<std::intptr_t>(memory) != -1) {
        segment_ = xcb_generate_id(connection_.get());
        const auto cookie =
            xcb_shm_attach_checked(connection_.get(), segment_, static_cast<std::uint32_t>(id), 0);
        isAttached =
            !xcbOwned(xcb_request_check(connection_.get(), cookie)) && connection_.isOpen();
        if (!isAttached) {
            shmdt(memory);
        }
    }
    // It lives until both sides have let go of it, whatever becomes of this process.
    shmctl(id, IPC_RMID, nullptr);
    if (isAttached) {
        memory_ = memory;
        size_ = bytes;
    }
    return isAttached;
}

std::optional<Image> X11PixelReader::read(xcb_pixmap_t pixmap, int width, int height) {
    canShare_ = canShare_ && reserve(byteCount(width, height));
    std::optional<Image> image =
        canShare_ ? readShared(pixmap, width, height) : readSent(pixmap, width, height);
    if (size_ > keptBytes) {
        release();
    }
    return image;
}

std::optional<Image> X11PixelReader::readShared(xcb_pixmap_t pixmap, int width, int height) {
    xcb_connection_t* const c = connection_.get();
    const auto cookie = xcb_shm_get_image(c, pixmap, 0, 0, static_cast<std::uint16_t>(width),
                                          static_cast<std::uint16_t>(height), ~0U,
                                          XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0);
    const auto reply = xcbOwned(xcb_shm_get_image_reply(c, cookie, nullptr));
    if (!reply || reply->size < byteCount(width, height)) {
        return std::nullopt;
    }
    return opaqueImage(memory_, width, height);
}

std::optional<Image> X11PixelReader::readSent(xcb_pixmap_t pixmap, int width, int height) {
    xcb_connection_t* const c = connection_.get();
    const auto cookie =
        xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, 0, 0, static_cast<std::uint16_t>(width),
                      static_cast<std::uint16_t>(height), ~0U);
    const auto reply = xcbOwned(xcb_get_image_reply(c, cookie, nullptr));
    if (!reply || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) <
                      byteCount(width, height)) {
        return std::nullopt;
    }
    return opaqueImage(xcb_get_image_data(reply.get()), width, height);
}

Image X11PixelReader::opaqueImage(const void* bytes, int width, int height) const {
    std::vector<std::uint32_t> pixels(byteCount(width, height) / bytesPerPixel);
    std::memcpy(pixels.data(), bytes, pixels.size() * bytesPerPixel);
    for (std::uint32_t& pixel : pixels) {
        pixel = (otherByteOrder_ ? swapped(pixel) : pixel) | opaque;
    }
    return {width, height, std::move(pixels)};
}

}  // namespace velmora
