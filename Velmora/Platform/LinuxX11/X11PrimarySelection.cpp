// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11PrimarySelection.h"

#include <poll.h>

#include <utility>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"

namespace velmora {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int bitsPerByte = 8;

}  // namespace

struct X11PrimarySelection::Parts {
    explicit Parts(const std::string& display)
        : connection(display), ownership(connection, X11ClientRange{}) {
        if (connection.isOpen()) {
            utf8 = connection.atom("UTF8_STRING");
            place = connection.atom("VELMORA_SELECTION");
            window = xcb_generate_id(connection.get());
            // Never mapped: it is where the answer is put.
            xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, window, connection.root(), -1,
                              -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                              nullptr);
        }
    }

    xcb_window_t owner() const {
        const auto cookie = xcb_get_selection_owner(connection.get(), XCB_ATOM_PRIMARY);
        const auto reply =
            xcbOwned(xcb_get_selection_owner_reply(connection.get(), cookie, nullptr));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    }

    /// Whether the owner put its answer there in time.
    bool convert(Clock::time_point end) {
        // Answers that came too late for the questions before are of no interest.
        connection.discardEvents();
        xcb_convert_selection(connection.get(), window, XCB_ATOM_PRIMARY, utf8, place,
                              XCB_CURRENT_TIME);
        xcb_flush(connection.get());
        while (connection.isOpen()) {
            const auto event = xcbOwned(xcb_poll_for_event(connection.get()));
            if (event && (event->response_type & 0x7F) == XCB_SELECTION_NOTIFY) {
                const auto* const notice =
                    reinterpret_cast<const xcb_selection_notify_event_t*>(event.get());
                return notice->property == place;
            }
            if (!event && !wait(end)) {
                return false;
            }
        }
        return false;
    }

    bool wait(Clock::time_point end) const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
        pollfd readable{xcb_get_file_descriptor(connection.get()), POLLIN, 0};
        return left > 0 && poll(&readable, 1, static_cast<int>(left)) > 0;
    }

    std::optional<std::string> answer() const {
        const auto cookie = xcb_get_property(connection.get(), 1, window, place, utf8, 0,
                                             greatestLength / sizeof(std::uint32_t));
        const auto reply = xcbOwned(xcb_get_property_reply(connection.get(), cookie, nullptr));
        // Another type is a refusal, or the announcement that a long text will come in pieces.
        if (!reply || reply->type != utf8 || reply->format != bitsPerByte ||
            reply->bytes_after > 0) {
            xcb_delete_property(connection.get(), window, place);
            xcb_flush(connection.get());
            return std::nullopt;
        }
        return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    }

    X11Connection connection;
    X11Ownership ownership;
    xcb_atom_t utf8 = XCB_ATOM_NONE;
    xcb_atom_t place = XCB_ATOM_NONE;
    xcb_window_t window = XCB_WINDOW_NONE;
};

X11PrimarySelection::X11PrimarySelection(std::string display) : display_(std::move(display)) {}

X11PrimarySelection::~X11PrimarySelection() = default;

std::optional<std::string> X11PrimarySelection::textOf(std::int64_t processId,
                                                       std::chrono::milliseconds patience) {
    if (!parts_ || !parts_->connection.isOpen()) {
        parts_ = std::make_unique<Parts>(display_);
    }
    if (!parts_->connection.isOpen() || processId <= 0) {
        return std::nullopt;
    }
    const auto end = Clock::now() + patience;
    const xcb_window_t owner = parts_->owner();
    if (owner == XCB_WINDOW_NONE || parts_->ownership.processId(owner) != processId ||
        !parts_->convert(end)) {
        return std::nullopt;
    }
    return parts_->answer();
}

}  // namespace velmora
