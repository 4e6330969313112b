// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// What another program finds on the clipboard, with a line feed after it.
inline std::string clipboardText(VirtualDesktop& desktop) {
    return desktop.run({"/usr/bin/python3", "-c",
                        "import gi\n"
                        "gi.require_version('Gtk', '3.0')\n"
                        "from gi.repository import Gtk, Gdk\n"
                        "print(Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).wait_for_text())"});
}

}  // namespace velmora::test
