// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Velmora/Platform/Clock.h"

namespace velmora {

/// Judges by what hosts tell whether the menu is on the screen. Hosts differ: some tell that they
/// opened it, others only ask for it, some of these long before they show it; some never tell that
/// it is gone. Whatever they do, the menu is not taken to be open for ever. Main thread.
class MenuSession {
  public:
    /// How long a host may leave the menu open without a sign of the user, in seconds.
    static constexpr double openLimit = 60;
    /// The same where it only asked for the menu.
    static constexpr double askedLimit = 10;
    /// The same after a press of a mouse button somewhere, by a host that tells when the menu is
    /// gone: the press may have been on the menu, where it opens a submenu or does nothing.
    static constexpr double pressedLimit = 10;

    using Changed = std::function<void(bool open)>;

    /// `changed` is called at every change. The clock outlives the session.
    MenuSession(Clock& clock, Changed changed);
    MenuSession(const MenuSession&) = delete;
    MenuSession& operator=(const MenuSession&) = delete;
    ~MenuSession();

    bool isOpen() const { return owner_.has_value(); }
    /// The host that shows the menu; nothing while it is closed.
    const std::optional<std::string>& owner() const { return owner_; }

    // What happened. Hosts by their unique names on the bus.
    void aboutToShow(const std::string& host);
    void opened(const std::string& host);
    void closed(const std::string& host);
    void triggered(const std::string& host);
    void hostLeft(const std::string& host);
    /// Somewhere, on the menu or not. Ends what is open, unless the host is known to tell that.
    void mousePressed();

    /// Ends what is open.
    void end();

  private:
    /// What is known of one host.
    struct Host {
        bool tellsOpening = false;
        bool tellsClosing = false;
        bool onlyAsks = false;  ///< Asked for the menu and nobody ever used it.
        /// How much longer it may hold the menu open; grows again while it does not.
        double allowance = openLimit;
        double allowanceAt = 0;
    };

    Host& known(const std::string& host);
    void begin(const std::string& host, double limit);
    /// Brings the allowance of a host up to now.
    void settle(Host& host, bool wasOpen);
    void expire(bool asked);
    void endOf(const std::string& host);

    Clock& clock_;
    Changed changed_;
    std::map<std::string, Host> hosts_;
    std::optional<std::string> owner_;
    bool ownerOnlyAsked_ = false;
    std::unique_ptr<OneShotTimer> limit_;
    double endsAt_ = 0;  ///< By its limit, in seconds of uptime.
};

}  // namespace velmora
