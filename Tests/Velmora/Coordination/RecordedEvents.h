// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "Velmora/Platform/EventMonitor.h"

namespace velmora::testing {

/// A pointer and a keyboard moved by the test.
class RecordedEvents final : public EventMonitor {
  public:
    enum class Kind { global, local };
    struct Installed {
        Kind kind;
        EventMask mask;
        Handler handler;
        Token token;
    };

    Token addGlobalMonitor(EventMask mask, Handler handler) override {
        return refusesGlobal ? 0 : add(Kind::global, mask, std::move(handler));
    }
    Token addLocalMonitor(EventMask mask, Handler handler) override {
        return add(Kind::local, mask, std::move(handler));
    }
    void removeMonitor(Token token) override {
        std::erase_if(monitors, [&](const Installed& monitor) { return monitor.token == token; });
    }
    Point mouseLocation() override { return location; }
    ModifierFlags modifierFlags() override { return flags; }

    /// Tells every monitor of this kind and mask.
    void send(Kind kind, EventMask mask, ModifierFlags eventFlags = {}) {
        const auto copy = monitors;
        for (const Installed& monitor : copy) {
            if (monitor.kind == kind && monitor.mask == mask) {
                monitor.handler(eventFlags);
            }
        }
    }

    std::vector<Installed> monitors;
    std::size_t installations = 0;
    bool refusesGlobal = false;
    Point location;
    ModifierFlags flags;

  private:
    Token add(Kind kind, EventMask mask, Handler handler) {
        ++installations;
        monitors.push_back({kind, mask, std::move(handler), ++lastToken_});
        return lastToken_;
    }

    Token lastToken_ = 0;
};

}  // namespace velmora::testing
