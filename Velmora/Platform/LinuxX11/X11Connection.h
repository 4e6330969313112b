// SPDX-License-Identifier: MIT
#pragma once

// For the files of this folder only: no other may see the client library's headers.

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply or an event, owned. Null where the server answered with an error or is gone.
template <typename Reply>
using XcbOwned = std::unique_ptr<Reply, XcbFree>;

template <typename Reply>
XcbOwned<Reply> xcbOwned(Reply* reply) {
    return XcbOwned<Reply>(reply);
}

/// One connection to the X server. Where it cannot be opened or breaks later, `isOpen` is false and
/// every request is a quiet miss. Used by one thread at a time. Errors of the server (windows
/// vanish at any moment) never reach another connection and never end the program.
class X11Connection {
  public:
    /// The display's name, ":0" say; empty for that of the environment.
    explicit X11Connection(const std::string& display = {});
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    bool isOpen() const;
    xcb_connection_t* get() const { return connection_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    int screenNumber() const { return screenNumber_; }

    /// Whether the server has this extension.
    bool hasExtension(xcb_extension_t& extension) const;

    /// The atom of this name; made where it does not exist yet.
    xcb_atom_t atom(const std::string& name);

    /// Asks for these atoms together, so that `atom` has them without asking.
    void learnAtoms(std::initializer_list<const char*> names);

    /// The 32-bit values of a property, `limit` of them at most; empty where it is absent or of
    /// another form.
    std::vector<std::uint32_t> property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                                        std::uint32_t limit);

    xcb_get_property_cookie_t requestProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                                              std::uint32_t limit);
    std::vector<std::uint32_t> propertyReply(xcb_get_property_cookie_t cookie);

    /// Throws away every event and error that has arrived.
    void discardEvents();

  private:
    xcb_intern_atom_cookie_t askForAtom(const std::string& name);
    xcb_atom_t learnAtom(const std::string& name, xcb_intern_atom_cookie_t question);

    xcb_connection_t* connection_ = nullptr;
    const xcb_screen_t* screen_ = nullptr;
    int screenNumber_ = 0;
    std::map<std::string, xcb_atom_t> atoms_;
};

}  // namespace velmora
