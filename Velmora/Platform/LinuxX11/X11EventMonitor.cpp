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
#include "Velmora/Platform/LinuxX11/X11PointerInquiry.h"
#include "Velmora/Platform/LinuxX11/X11PointerState.h"

namespace velmora {
namespace {

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
          inquiry(connection, ownership, selection.masterPointer()),
          pump(
              connection, [this](const xcb_generic_event_t& event) { note(event); },
              [this] { finish(); }) {}

    Token add(bool isLocal, EventMask mask, Handler handler);
    void updateSelection();
    void note(const xcb_generic_event_t& event);
    void noteRaw(const X11InputSelection::Raw& raw);
    void finish();
    void inquire();
    void tell(const X11PointerInquiry::Result& result);
    void call(const Occurrence& occurrence, bool isLocal, ModifierFlags flags);
    std::optional<X11PointerState> waitForPointer();

    const ScreenGeometrySource& geometry;
    X11Connection connection;
    X11Ownership ownership;
    X11InputSelection selection;
    std::map<Token, Monitor> monitors;
    Token lastToken = 0;
    std::vector<Occurrence> occurrences;  ///< Those that nobody has asked about yet.
    std::vector<Occurrence> inquired;     ///< Those that an inquiry is under way about.
    bool hasNews = false;                 ///< Something happened since the last inquiry began.
    std::set<std::uint32_t> heldButtons;
    ModifierFlags lastFlags;
    Point lastNative;
    int batchesInHand = 0;  ///< While there are any, `lastNative` is the place of the last one.
    X11PointerInquiry inquiry;
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
    if (const auto state = waitForPointer()) {
        heldButtons = state->buttons;
        lastFlags = state->flags;
    }
}

std::optional<X11PointerState> X11EventMonitor::Parts::waitForPointer() {
    auto state = x11PointerState(connection, selection.masterPointer(), connection.root());
    if (state) {
        lastNative = state->native;
    }
    pump.keepEarlyEvents();
    if (inquiry.isUnderWay()) {
        pump.finishSoon();
    }
    return state;
}

void X11EventMonitor::Parts::note(const xcb_generic_event_t& event) {
    hasNews = true;
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

/// One inquiry after the other; what happens during one is told with the next.
void X11EventMonitor::Parts::finish() {
    do {
        if (!inquiry.isUnderWay()) {
            inquire();
        }
        if (const auto result = inquiry.take()) {
            tell(*result);
        }
    } while (hasNews && !inquiry.isUnderWay() && connection.isOpen());
}

/// Also after releases: a button that was let go unseen (its device was unplugged) is let go now.
void X11EventMonitor::Parts::inquire() {
    if (std::exchange(hasNews, false)) {
        inquired = std::exchange(occurrences, {});
        inquiry.begin();
    }
}

void X11EventMonitor::Parts::tell(const X11PointerInquiry::Result& result) {
    lastNative = result.state.native;
    // What was pressed or let go since may be older or newer than the answer; the next one tells.
    if (!hasNews) {
        heldButtons = result.state.buttons;
    }
    ++batchesInHand;
    for (const Occurrence& occurrence : std::exchange(inquired, {})) {
        call(occurrence, result.isOverOurs, occurrence.flags.value_or(result.state.flags));
    }
    // Behind what the handlers have posted.
    QMetaObject::invokeMethod(
        &pump, [this] { --batchesInHand; }, Qt::QueuedConnection);
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
    if (parts_->batchesInHand == 0) {
        parts_->waitForPointer();
    }
    return parts_->geometry.current().screenFromNative(parts_->lastNative);
}

ModifierFlags X11EventMonitor::modifierFlags() {
    const auto state = parts_->waitForPointer();
    return state ? state->flags.masked() : ModifierFlags();
}

}  // namespace velmora
