# SPDX-License-Identifier: MIT
"""Which folder may include which, which headers a folder may see, and a licence in every source.

The folders form one line: VelmoraCore <- Platform interfaces <- TextCapture <- Coordination <-
Presentation and the composition root; Diagnostics stands beside TextCapture. Backends include
interfaces only, and nobody but the loader and the composition root includes a backend.
"""

from __future__ import annotations

import re
import sys
from dataclasses import dataclass
from pathlib import Path

CORE = "VelmoraCore"
PLATFORM = "Velmora/Platform"
BACKENDS = tuple(f"{PLATFORM}/{name}" for name in
                 ("Linux", "LinuxX11", "LinuxWayland", "Recorded", "Unavailable", "Loader"))
TEXT_CAPTURE = "Velmora/TextCapture"
DIAGNOSTICS = "Velmora/Diagnostics"
COORDINATION = "Velmora/Coordination"
PRESENTATION = "Velmora/Presentation"
COORDINATION_UNAVAILABLE = "Velmora/Coordination/Unavailable"
COMMANDS_CORE = "Velmora/CommandLine/Core"
COMMANDS_APPLICATION = "Velmora/CommandLine/Application"
ROOT = "Velmora"  # main.cpp and what stands beside it: the composition root

# A folder, and the folders whose headers it may include besides its own.
ARROWS: dict[str, tuple[str, ...]] = {
    CORE: (),
    PLATFORM: (CORE,),
    **{backend: (CORE, PLATFORM) for backend in BACKENDS},
    TEXT_CAPTURE: (CORE, PLATFORM),
    DIAGNOSTICS: (CORE, PLATFORM, TEXT_CAPTURE),
    COORDINATION: (CORE, PLATFORM, TEXT_CAPTURE, DIAGNOSTICS),
    COORDINATION_UNAVAILABLE: (CORE, PLATFORM, f"{PLATFORM}/Unavailable", TEXT_CAPTURE, COORDINATION),
    PRESENTATION: (CORE, PLATFORM, TEXT_CAPTURE, DIAGNOSTICS, COORDINATION),
    COMMANDS_CORE: (CORE,),
}
# Backends that stand on another one, and interfaces that a backend plays for the coordination.
ARROWS[f"{PLATFORM}/Loader"] = (CORE, PLATFORM, *BACKENDS, COORDINATION, COORDINATION_UNAVAILABLE)
ARROWS[f"{PLATFORM}/Linux"] = (CORE, PLATFORM, COORDINATION)
ARROWS[f"{PLATFORM}/LinuxX11"] = (CORE, PLATFORM, COORDINATION)
ARROWS[f"{PLATFORM}/LinuxWayland"] = (CORE, PLATFORM, COORDINATION)
ARROWS[f"{PLATFORM}/Recorded"] = (CORE, PLATFORM, TEXT_CAPTURE)
EVERYTHING = (CORE, PLATFORM, *BACKENDS, TEXT_CAPTURE, DIAGNOSTICS, COORDINATION,
              COORDINATION_UNAVAILABLE, PRESENTATION, COMMANDS_CORE, COMMANDS_APPLICATION)
ARROWS[COMMANDS_APPLICATION] = tuple(
    folder for folder in EVERYTHING
    if folder not in BACKENDS or folder.endswith(("Loader", "Recorded")))
ARROWS[ROOT] = EVERYTHING

# Not backends of any interface but the caller of the running program and the user's folders, so
# that their users may name them.
EXCEPTIONS = {("Velmora/Platform/Linux/RemoteControlClient.h", COMMANDS_APPLICATION),
              ("Velmora/Platform/Linux/XdgPaths.h", COMMANDS_APPLICATION)}

# Vendor headers, and the backends that may include them.
LINUX, X11, WAYLAND = BACKENDS[0], BACKENDS[1], BACKENDS[2]
VENDORS: tuple[tuple[str, re.Pattern[str], tuple[str, ...]], ...] = (
    ("X11", re.compile(r"(X11|xcb|xkbcommon)/"), (X11,)),
    ("Qt's private window system interface", re.compile(r"(qpa/|private/|QX11|qguiapplication_platform)"),
     (X11, WAYLAND)),
    ("Wayland", re.compile(r"wayland-"), (WAYLAND,)),
    ("Tesseract", re.compile(r"(tesseract|leptonica)/|(allheaders|baseapi)\.h"), (LINUX,)),
    ("speech dispatcher", re.compile(r"(speech-dispatcher/)?libspeechd"), (LINUX,)),
    ("D-Bus", re.compile(r"(dbus|atspi|QtDBus)/|(QDBus\w*|qdbus\w*)(\.h)?$"), (LINUX, X11, WAYLAND)),
    ("libsodium", re.compile(r"sodium(\.h|/)"), (LINUX,)),
)
# These may use the session bus in their sources: the program's own name on it, and its caller.
DBUS_SOURCES = (COORDINATION, COMMANDS_APPLICATION, ROOT, PRESENTATION)

QT = re.compile(r"(Q[A-Z]\w*|Qt\w*/.*|q[a-z]+\.h)$")
QT_FREE = (CORE, PLATFORM, TEXT_CAPTURE, COMMANDS_CORE)
SYSTEM = re.compile(r"(sys/\w+|unistd|fcntl|pthread|poll|linux/.*|dlfcn)(\.h)?$")
SYSTEM_IN_CORE = ("DictionaryText.cpp", "MemoryBlock.cpp", "resource_bundle_accessor.cpp")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
SOURCES = {".cpp", ".h", ".cmake", ".py", ".qml", ".sh"}
LICENSED_FOLDERS = ("VelmoraCore", "Velmora", "Tests", "Benchmarks", "Fuzz", "CMake", "scripts",
                    ".ci")
# Words that look like a Qt header and are none.
NOT_QT = {"qmath"}


@dataclass(frozen=True)
class Fault:
    file: str
    line: int
    why: str

    def __str__(self) -> str:
        return f"{self.file}:{self.line}: {self.why}"


def folder_of(path: str) -> str | None:
    """The longest known folder that holds the path."""
    known = [folder for folder in ARROWS if path.startswith(folder + "/")]
    return max(known, key=len) if known else None


def vendor_fault(folder: str, is_header: bool, header: str) -> str | None:
    for vendor, pattern, homes in VENDORS:
        if not pattern.match(header):
            continue
        if folder in homes:
            return None
        if vendor == "D-Bus" and folder in DBUS_SOURCES and not is_header:
            return None
        place = "a header" if is_header else "a source"
        return f"{vendor} header <{header}> in {place} outside {' and '.join(homes)}"
    return None


def include_fault(path: str, folder: str, quote: str, header: str) -> str | None:
    is_header = path.endswith(".h")
    if quote == '"' and not header.endswith((".moc", ".inc")) and not header.startswith("moc_"):
        target = folder_of(header)
        if target is None:
            if "/" not in header:
                return f'"{header}": includes are written from the root of the project'
            return None
        if (header, folder) in EXCEPTIONS:
            return None
        if target != folder and target not in ARROWS[folder]:
            return f"{folder} must not include {target} ({header})"
        return None
    if (vendor := vendor_fault(folder, is_header, header)) is not None:
        return vendor
    if folder in QT_FREE and QT.match(header) and header not in NOT_QT:
        return f"<{header}>: {folder} is free of Qt"
    if folder == CORE and SYSTEM.match(header) and Path(path).name not in SYSTEM_IN_CORE:
        return f"<{header}>: the core is free of platform headers outside {' and '.join(SYSTEM_IN_CORE)}"
    return None


def faults_of_source(path: str, text: str) -> list[Fault]:
    faults = []
    folder = folder_of(path)
    for number, line in enumerate(text.splitlines(), start=1):
        found = INCLUDE.match(line)
        if found and folder is not None:
            why = include_fault(path, folder, found[1], found[2])
            if why is not None:
                faults.append(Fault(path, number, why))
    if path.endswith(".h") and not re.search(r"^#pragma once$", text, re.MULTILINE):
        faults.append(Fault(path, 1, "#pragma once is missing"))
    return faults


def is_script(path: Path) -> bool:
    with path.open("rb") as stream:
        return stream.read(2) == b"#!"


def sources(root: Path) -> list[Path]:
    found = [root / "CMakeLists.txt"] if (root / "CMakeLists.txt").is_file() else []
    for name in LICENSED_FOLDERS:
        for path in sorted((root / name).rglob("*")):
            if "__pycache__" in path.parts or not path.is_file():
                continue
            if path.suffix in SOURCES or path.name == "CMakeLists.txt" or is_script(path):
                found.append(path)
    return found


def check(root: Path) -> list[Fault]:
    faults: list[Fault] = []
    for path in sources(root):
        relative = path.relative_to(root).as_posix()
        text = path.read_text(encoding="utf-8", errors="replace")
        if "SPDX-License-Identifier: " not in "\n".join(text.splitlines()[:3]):
            faults.append(Fault(relative, 1, "no SPDX-License-Identifier in the first lines"))
        if path.suffix in {".cpp", ".h"}:
            faults.extend(faults_of_source(relative, text))
    return faults


def main() -> int:
    root = Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    if not root.is_dir():
        print(f"check-layering: {root} is no folder", file=sys.stderr)
        return 2
    faults = check(root)
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
