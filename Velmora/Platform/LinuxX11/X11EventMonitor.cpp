// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11EventMonitor.h"

#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11EventPump.h"
#include "Velmora/Platform/LinuxX11/X11InputSelection.h"
#include "Velmora/Platform/LinuxX11/X11Ownership.h"
#include "Velmora/Platform/LinuxX11/X11PointerState.h"

namespace velmora {
namespace {

constexpr int nestingLimit = 8;

constexpr std::uint32_t bits(EventMask mask) {
    return static_cast<std::uint32_t>(mask);
}

constexpr EventMask maskOfButton(std::uint32_t button) {
    switch (button) {
        case 1:
            return EventMask::leftMouseDown;
        case 3:
            return EventMask::rightMouseDown;
        default:
            return EventMask::otherMouseDown;
    }
}

struct Monitor {
    bool isLocal;
    EventMask mask;
    EventMonitor::Handler handler;
};

/// Something that happened, to be told once it is known over whose window.
struct Occurrence {
    EventMask kind;
    std::optional<ModifierFlags> flags;  ///< Those of the pointer's state where absent.
};

}  // namespace

struct X11EventMonitor::Parts {
    Parts(const ScreenGeometrySource& source, const X11ClientRange& application,
          const std::string& display)
        : geometry(source),
          connection(display),
          ownership(connection, application),
          selection(connection),
          pump(
              connection, [this](const xcb_generic_event_t& event) { note(event); },
              [this] { tell(); }) {}

    Token add(bool isLocal, EventMask mask, Handler handler);
    void updateSelection();
    void note(const xcb_generic_event_t& event);
    void noteRaw(const X11InputSelection::Raw& raw);
    void tell();
    void call(const Occurrence& occurrence, bool isLocal, ModifierFlags flags);
    bool isOverOurs(xcb_window_t child);
    std::optional<X11PointerState> askPointer();

    const ScreenGeometrySource& geometry;
    X11Connection connection;
    X11Ownership ownership;
    X11InputSelection selection;
    std::map<Token, Monitor> monitors;
    Token lastToken = 0;
    std::vector<Occurrence> occurrences;
    std::set<std::uint32_t> heldButtons;
    ModifierFlags lastFlags;
    Point lastNative;
    X11EventPump pump;
};

EventMonitor::Token X11EventMonitor::Parts::add(bool isLocal, EventMask mask, Handler handler) {
    if (!selection.isAvailable() || !connection.isOpen()) {
        return 0;
    }
    monitors.emplace(++lastToken, Monitor{isLocal, mask, std::move(handler)});
    updateSelection();
    return lastToken;
}

void X11EventMonitor::Parts::updateSelection() {
    std::uint32_t wanted = 0;
    for (const auto& [token, monitor] : monitors) {
        wanted |= bits(monitor.mask);
    }
    const bool pointer = (wanted & (bits(EventMask::mouseMoved) | bits(EventMask::anyMouseDown)));
    const bool modifiers = (wanted & bits(EventMask::flagsChanged)) != 0;
    selection.select(pointer, modifiers);
    if (const auto state = askPointer()) {
        heldButtons = state->buttons;
        lastFlags = state->flags;
    }
    pump.keepEarlyEvents();
}

std::optional<X11PointerState> X11EventMonitor::Parts::askPointer() {
    auto state = x11PointerState(connection, selection.masterPointer(), connection.root());
    if (state) {
        lastNative = state->native;
    }
    return state;
}

void X11EventMonitor::Parts::note(const xcb_generic_event_t& event) {
    if (const auto raw = selection.rawEvent(event)) {
        noteRaw(*raw);
    } else if (const auto flags = selection.modifierEvent(event)) {
        if (*flags != lastFlags) {
            lastFlags = *flags;
            occurrences.push_back({EventMask::flagsChanged, *flags});
        }
    }
}

void X11EventMonitor::Parts::noteRaw(const X11InputSelection::Raw& raw) {
    if (x11IsScrollButton(raw.button)) {
        return;
    }
    switch (raw.kind) {
        case X11InputSelection::RawKind::motion:
            if (heldButtons.empty() &&
                (occurrences.empty() || occurrences.back().kind != EventMask::mouseMoved)) {
                occurrences.push_back({EventMask::mouseMoved, std::nullopt});
            }
            break;
        case X11InputSelection::RawKind::press:
            heldButtons.insert(raw.button);
            occurrences.push_back({maskOfButton(raw.button), std::nullopt});
            break;
        case X11InputSelection::RawKind::release:
            heldButtons.erase(raw.button);
            break;
    }
}

void X11EventMonitor::Parts::tell() {
    const std::vector<Occurrence> batch = std::exchange(occurrences, {});
    // Also after releases: a button that was let go unseen (its device was unplugged) is let go
    // now.
    const auto state = askPointer();
    if (!state) {
        return;
    }
    heldButtons = state->buttons;
    if (batch.empty()) {
        return;
    }
    const bool isLocal = isOverOurs(state->child);
    for (const Occurrence& occurrence : batch) {
        call(occurrence, isLocal, occurrence.flags.value_or(state->flags));
    }
}

void X11EventMonitor::Parts::call(const Occurrence& occurrence, bool isLocal, ModifierFlags flags) {
    std::vector<Token> tokens;
    for (const auto& [token, monitor] : monitors) {
        if (monitor.isLocal == isLocal && (bits(monitor.mask) & bits(occurrence.kind)) != 0) {
            tokens.push_back(token);
        }
    }
    for (const Token token : tokens) {
        const auto found = monitors.find(token);  // An earlier handler may have removed it.
        if (found != monitors.end()) {
            const Handler handler = found->second.handler;
            handler(flags.masked());
        }
    }
}

bool X11EventMonitor::Parts::isOverOurs(xcb_window_t child) {
    // A window of ours may sit inside a window manager's frame.
    for (int level = 0; level < nestingLimit && child != XCB_WINDOW_NONE; ++level) {
        if (ownership.isOurs(child)) {
            return true;
        }
        const auto state = x11PointerState(connection, selection.masterPointer(), child);
        child = state ? state->child : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }
    return false;
}

X11EventMonitor::X11EventMonitor(const ScreenGeometrySource& geometry,
                                 const X11ClientRange& application, const std::string& display)
    : parts_(std::make_unique<Parts>(geometry, application, display)) {}

X11EventMonitor::~X11EventMonitor() = default;

EventMonitor::Token X11EventMonitor::addGlobalMonitor(EventMask mask, Handler handler) {
    return parts_->add(false, mask, std::move(handler));
}

EventMonitor::Token X11EventMonitor::addLocalMonitor(EventMask mask, Handler handler) {
    return parts_->add(true, mask, std::move(handler));
}

void X11EventMonitor::removeMonitor(Token token) {
    if (parts_->monitors.erase(token) > 0) {
        parts_->updateSelection();
    }
}

Point X11EventMonitor::mouseLocation() {
    parts_->askPointer();
    parts_->pump.keepEarlyEvents();
    return parts_->geometry.current().screenFromNative(parts_->lastNative);
}

ModifierFlags X11EventMonitor::modifierFlags() {
    const auto state = parts_->askPointer();
    parts_->pump.keepEarlyEvents();
    return state ? state->flags.masked() : ModifierFlags();
}

}  // namespace velmora
