// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// Ends the program when the X server goes, as it does at the end of a session: at once, in silence
/// and with success. The toolkit would call it a failure. In force while this lives, once for the
/// process; made after the application object, whose connection it watches, and gone before it.
/// Nothing where that has no connection to an X server.
class X11ServerLoss {
  public:
    X11ServerLoss();
    X11ServerLoss(const X11ServerLoss&) = delete;
    X11ServerLoss& operator=(const X11ServerLoss&) = delete;
    ~X11ServerLoss();
};

}  // namespace velmora
