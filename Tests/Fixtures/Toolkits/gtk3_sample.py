# SPDX-License-Identifier: MIT
"""A GTK 3 window with several kinds of text, for tests that read other programs."""
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

with open(sys.argv[1], encoding="utf-8") as file:
    content = file.read()

window = Gtk.Window(title="GTK 3 sample")
window.connect("destroy", Gtk.main_quit)
box = Gtk.Box(orientation=Gtk.Orientation.VERTICAL, spacing=8)
window.add(box)

# A notebook, because its tabs stop some hit tests.
notebook = Gtk.Notebook()
text = Gtk.TextView()
text.get_buffer().set_text(content)
notebook.append_page(text, Gtk.Label(label="第一页"))
box.pack_start(notebook, True, True, 0)

entry = Gtk.Entry(text="输入框里😀　由　词典")
box.pack_start(entry, False, False, 0)
secret = Gtk.Entry(text="秘密", visibility=False)
box.pack_start(secret, False, False, 0)
label = Gtk.Label(label="标签里😀　田　词典", xalign=0)
box.pack_start(label, False, False, 0)
button = Gtk.Button(label="按钮词典")
box.pack_start(button, False, False, 0)

window.set_default_size(700, 500)
window.show_all()
Gtk.main()
