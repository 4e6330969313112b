# SPDX-License-Identifier: MIT
"""The layering check on small trees, good and bad."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
LICENCE = "// SPDX-License-Identifier: MIT\n"


class CheckLayering(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Path(folder.name)

    def put(self, path, *lines, licence=LICENCE):
        file = self.tree / path
        file.parent.mkdir(parents=True, exist_ok=True)
        once = "#pragma once\n" if path.endswith(".h") else ""
        file.write_text(licence + once + "\n".join(lines) + "\n", encoding="utf-8")

    def check(self, folder=None):
        return subprocess.run([ROOT / "scripts/check-layering", folder or self.tree], text=True,
                              capture_output=True, check=False)

    def assert_fault(self, place, *words):
        result = self.check()
        self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
        lines = [line for line in result.stdout.splitlines() if line.startswith(place)]
        self.assertEqual(len(lines), 1, result.stdout)
        for word in words:
            self.assertIn(word, lines[0])

    def assert_good(self):
        result = self.check()
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_this_project_is_good(self):
        result = self.check(ROOT)
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_arrows_that_are_allowed(self):
        self.put("VelmoraCore/Uuid.cpp", '#include "VelmoraCore/Uuid.h"', "#include <string>")
        self.put("Velmora/TextCapture/Probe.h", '#include "VelmoraCore/Uuid.h"',
                 '#include "Velmora/Platform/Geometry.h"')
        self.put("Velmora/Platform/LinuxX11/Screens.cpp", "#include <X11/Xlib.h>",
                 '#include "Velmora/Platform/Screens.h"')
        self.put("Velmora/Coordination/AppModel.h", "#include <QObject>",
                 '#include "Velmora/TextCapture/Probe.h"')
        self.put("Velmora/main.cpp", '#include "Velmora/Platform/LinuxX11/Screens.h"')
        self.assert_good()

    def test_core_includes_nothing_of_the_application(self):
        self.put("VelmoraCore/Uuid.h", "", '#include "Velmora/Platform/Geometry.h"')
        self.assert_fault("VelmoraCore/Uuid.h:4:", "VelmoraCore must not include Velmora/Platform")

    def test_interfaces_do_not_include_backends(self):
        self.put("Velmora/Platform/Screens.cpp",
                 '#include "Velmora/Platform/LinuxX11/X11Screens.h"')
        self.assert_fault("Velmora/Platform/Screens.cpp:2:", "must not include")

    def test_text_capture_does_not_include_coordination(self):
        self.put("Velmora/TextCapture/Probe.cpp", '#include "Velmora/Coordination/AppModel.h"')
        self.assert_fault("Velmora/TextCapture/Probe.cpp:2:", "must not include")

    def test_coordination_includes_neither_windows_nor_backends(self):
        self.put("Velmora/Coordination/AppModel.cpp",
                 '#include "Velmora/Presentation/SettingsWindow.h"')
        self.put("Velmora/Coordination/HoverMonitor.cpp",
                 '#include "Velmora/Platform/Linux/LinuxClock.h"')
        self.assert_fault("Velmora/Coordination/AppModel.cpp:2:", "must not include")
        self.assert_fault("Velmora/Coordination/HoverMonitor.cpp:2:", "must not include")

    def test_backends_do_not_include_each_other(self):
        self.put("Velmora/Platform/Linux/Clock.cpp",
                 '#include "Velmora/Platform/LinuxX11/Screens.h"')
        self.assert_fault("Velmora/Platform/Linux/Clock.cpp:2:", "must not include")

    def test_command_line_core_links_the_core_alone(self):
        self.put("Velmora/CommandLine/Core/Help.cpp", '#include "Velmora/Platform/Geometry.h"')
        self.put("Velmora/CommandLine/Core/Segment.cpp", "#include <QString>")
        self.assert_fault("Velmora/CommandLine/Core/Help.cpp:2:", "must not include")
        self.assert_fault("Velmora/CommandLine/Core/Segment.cpp:2:", "free of Qt")

    def test_vendor_headers_stay_with_their_backend(self):
        for header in ("X11/Xlib.h", "tesseract/baseapi.h", "leptonica/allheaders.h",
                       "libspeechd.h", "sodium.h", "QDBusArgument", "qpa/qplatformscreen.h",
                       "wayland-client.h"):
            with self.subTest(header=header):
                self.put("Velmora/Coordination/Something.h", f"#include <{header}>")
                self.assert_fault("Velmora/Coordination/Something.h:3:", header)

    def test_one_backend_does_not_see_the_vendor_of_another(self):
        self.put("Velmora/Platform/Linux/Clock.cpp", "#include <X11/Xlib.h>")
        self.assert_fault("Velmora/Platform/Linux/Clock.cpp:2:", "X11 header")

    def test_message_types_of_the_bus_stay_out_of_headers(self):
        self.put("Velmora/Coordination/BusName.cpp", "#include <QDBusConnection>")
        self.assert_good()
        self.put("Velmora/Coordination/BusName.h", "#include <QDBusConnection>")
        self.assert_fault("Velmora/Coordination/BusName.h:3:", "D-Bus")

    def test_no_qt_below_the_coordination(self):
        for folder in ("VelmoraCore", "Velmora/Platform", "Velmora/TextCapture"):
            for header in ("QString", "QtCore/QString", "qglobal.h"):
                with self.subTest(folder=folder, header=header):
                    self.put(f"{folder}/Something.cpp", f"#include <{header}>")
                    self.assert_fault(f"{folder}/Something.cpp:2:", "free of Qt")

    def test_no_platform_header_in_the_core(self):
        self.put("VelmoraCore/Store.cpp", "#include <sys/mman.h>")
        self.assert_fault("VelmoraCore/Store.cpp:2:", "platform headers")
        (self.tree / "VelmoraCore/Store.cpp").unlink()
        self.put("VelmoraCore/MemoryBlock.cpp", "#include <sys/mman.h>", "#include <unistd.h>")
        self.assert_good()

    def test_includes_are_written_from_the_root(self):
        self.put("Velmora/Coordination/AppModel.cpp", '#include "AppModel.h"')
        self.assert_fault("Velmora/Coordination/AppModel.cpp:2:", "from the root")

    def test_every_source_names_its_licence(self):
        self.put("Velmora/main.cpp", "int main() {}", licence="")
        self.put("scripts/tool", "", licence="#!/bin/sh\n")
        self.put("CMake/Some.cmake", "", licence="# no licence\n")
        for place in ("Velmora/main.cpp:1:", "scripts/tool:1:", "CMake/Some.cmake:1:"):
            self.assert_fault(place, "SPDX")

    def test_headers_are_read_once(self):
        self.put("Velmora/Platform/Clock.h", "struct Clock {};")
        text = (self.tree / "Velmora/Platform/Clock.h").read_text()
        (self.tree / "Velmora/Platform/Clock.h").write_text(text.replace("#pragma once\n", ""))
        self.assert_fault("Velmora/Platform/Clock.h:1:", "#pragma once")

    def test_a_folder_that_is_not_there(self):
        result = self.check(self.tree / "nowhere")
        self.assertEqual(result.returncode, 2)
        self.assertEqual(len(result.stderr.splitlines()), 1)


if __name__ == "__main__":
    unittest.main()
