# SPDX-License-Identifier: MIT
"""A GTK 4 window with several kinds of text, for tests that read other programs."""
import sys

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import GLib, Gtk  # noqa: E402

with open(sys.argv[1], encoding="utf-8") as file:
    content = file.read()

loop = GLib.MainLoop()
window = Gtk.Window(title="GTK 4 sample")
window.connect("close-request", lambda *_: loop.quit())
box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL, spacing=8)
window.set_child(box)

text = Gtk.TextView(vexpand=True)
text.get_buffer().set_text(content)
box.append(text)
label = Gtk.Label(label="标签里😀　田　词典", xalign=0)
box.append(label)
box.append(Gtk.Entry(text="输入框里😀　由　词典"))
box.append(Gtk.Button(label="按钮词典"))

window.set_default_size(700, 500)
window.present()
loop.run()
