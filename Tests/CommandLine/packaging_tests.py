# SPDX-License-Identifier: MIT
"""What is installed besides the programs: manual page, completions, icons, desktop files; and that
they say what the program's own help says."""

import os
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
BUILD = Path(os.environ["VELMORA_BUILD_FOLDER"])
VELMORA = BUILD / "velmora"
PACKAGING = ROOT / "Packaging"
ICON = "com.velmora.Velmora"
SIZES = (16, 22, 24, 32, 48, 64, 96, 128, 256, 512)
OPTION = re.compile(r"--[a-z][a-z-]*")
TIMEOUT = 120


def help_of(*arguments):
    result = subprocess.run([VELMORA, *arguments, "--help"], capture_output=True, text=True,
                            check=True, timeout=TIMEOUT)
    return result.stdout


def commands():
    """Every command that the general help names."""
    names = []
    for line in help_of().splitlines():
        indented = re.match(r"  ([a-z].*)", line)
        if indented:
            part = indented.group(1)
            names += part.split(", ") if ", " in part.split("  ")[0] else [part.split()[0]]
    return names


def options_by_command():
    """The options of each command by its own help, --help left out."""
    return {name: set(OPTION.findall(help_of(name))) - {"--help"} for name in commands()}


class Commands(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.options = options_by_command()

    def test_the_help_names_the_commands(self):
        self.assertEqual(len(self.options), 13, self.options)
        self.assertIn("autostart", self.options)
        self.assertIn("quit", self.options)
        self.assertEqual(self.options["doctor"], {"--json"})

    def test_the_manual_page_has_every_command_and_option(self):
        page = (PACKAGING / "velmora.1").read_text(encoding="utf-8")
        page = re.sub(r"\\f[A-Z]", "", page).replace("\\-", "-")
        synopsis = page[page.index(".SH SYNOPSIS"):page.index(".SH DESCRIPTION")]
        described = page[page.index(".SH COMMANDS"):]
        found = {name: set() for name in self.options}
        for entry in synopsis.split(".br"):
            line = " ".join(entry.replace(".B ", "").split())
            for name in self.options:
                if re.match(rf"(\.SH SYNOPSIS )?velmora (.*\| )?{name}\b", line):
                    found[name] |= set(OPTION.findall(line))
        self.assertEqual(found, self.options)
        for name, options in self.options.items():
            self.assertRegex(described, rf'(?m)^\.BR? .*\b{name}\b', name)
            for option in options | {"--help", "--version"}:
                self.assertIn(option, described)

    def test_the_manual_page_has_every_variable_that_the_program_reads(self):
        page = (PACKAGING / "velmora.1").read_text(encoding="utf-8")
        environment = page[page.index(".SH ENVIRONMENT"):page.index(".SH FILES")]
        read = {"NO_COLOR"}
        for folder in ("Velmora", "VelmoraCore"):
            for source in (ROOT / folder).rglob("*.cpp"):
                # Names for the X server look the same.
                if "LinuxX11" not in source.parts:
                    text = source.read_text(encoding="utf-8")
                    read |= set(re.findall(r'"(VELMORA_[A-Z_]+)"', text))
        self.assertGreater(len(read), 5, read)
        for name in read:
            self.assertRegex(environment, rf"\b{name}\b")

    def test_the_manual_page_is_well_formed(self):
        if shutil.which("groff"):
            result = subprocess.run(
                ["groff", "-man", "-Tutf8", "-ww", "-z", PACKAGING / "velmora.1"],
                capture_output=True, text=True, check=False, timeout=TIMEOUT)
            self.assertEqual((result.returncode, result.stderr), (0, ""))

    def bash_offers(self, *words):
        script = 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); ' \
                 'compopt() { :; }; _velmora; printf "%s\\n" "${COMPREPLY[@]}"'
        result = subprocess.run(["bash", "-c", script, "bash", PACKAGING / "completions/velmora.bash",
                                 "velmora", *words], capture_output=True, text=True, check=True,
                                timeout=TIMEOUT)
        self.assertEqual(result.stderr, "")
        return set(result.stdout.split())

    def test_bash_completes_every_command_and_option(self):
        self.assertEqual(self.bash_offers(""), set(self.options) | {"--help", "--version"})
        self.assertEqual(self.bash_offers("rec"), {"recognize"})
        for name, options in self.options.items():
            self.assertEqual(self.bash_offers(name, "--"), options | {"--help"}, name)
        self.assertEqual(self.bash_offers("autostart", ""), {"on", "off", "status", "--help"})

    def test_zsh_completes_every_command_and_option(self):
        text = (PACKAGING / "completions/_velmora").read_text(encoding="utf-8")
        listed = set(re.findall(r"(?m)^        '([a-z]+):", text))
        self.assertEqual(listed, set(self.options))
        shared = {"$json": "--json", "$dictionary": "--dictionary"}
        branches = text[text.index("case ${line[1]} in"):]
        for name, options in self.options.items():
            branch = re.search(rf"(?ms)^                {name}\) (.*?);;", branches)
            offered = set(OPTION.findall(branch.group(1))) if branch else set()
            offered |= {option for word, option in shared.items()
                        if branch and word in branch.group(1)}
            self.assertEqual(offered, options, name)
        self.assertIn("_values state on off status", branches)

    def test_fish_completes_every_command_and_option(self):
        text = (PACKAGING / "completions/velmora.fish").read_text(encoding="utf-8")
        listed = re.search(r"set -l commands (.*)", text).group(1).split()
        self.assertEqual(set(listed), set(self.options))
        self.assertEqual(set(re.findall(r"(?m)^    '([a-z]+):", text)), set(self.options))
        offered = {name: set() for name in self.options}
        for names, option in re.findall(
                r"(?m)^complete .*__fish_seen_subcommand_from ([a-z ]+)' -l ([a-z-]+)", text):
            for name in names.split():
                offered[name].add("--" + option)
        self.assertEqual(offered, self.options)
        self.assertRegex(text, r"__fish_seen_subcommand_from autostart' -a 'on off status'")

    def test_the_shells_that_are_there_can_read_their_completions(self):
        for shell, name in (("bash", "velmora.bash"), ("zsh", "_velmora"), ("fish", "velmora.fish")):
            if shutil.which(shell):
                result = subprocess.run([shell, "-n", PACKAGING / "completions" / name],
                                        capture_output=True, text=True, check=False, timeout=TIMEOUT)
                self.assertEqual((result.returncode, result.stderr), (0, ""), shell)

    def test_the_actions_of_the_desktop_file_are_commands(self):
        entry = (PACKAGING / f"{ICON}.desktop").read_text(encoding="utf-8")
        actions = re.search(r"(?m)^Actions=(.*);$", entry).group(1).split(";")
        self.assertEqual(actions, ["settings", "onboarding", "toggle", "diagnostics", "quit"])
        for action in actions:
            command = re.search(rf"(?ms)^\[Desktop Action {action}\].*?^Exec=velmora (.*?)$", entry)
            words = command.group(1).split()
            self.assertEqual(words[0], action)
            self.assertLessEqual(set(words[1:]), self.options[action])


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.prefix = Path(cls.folder.name)
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True,
                       stdout=subprocess.DEVNULL, timeout=TIMEOUT)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_everything_is_in_its_place(self):
        for name in ("bin/velmora", "bin/velmora-app", "lib/velmora/velmora-recognizer",
                     "share/velmora/Velmora_VelmoraCore.bundle", "share/man/man1/velmora.1",
                     "share/bash-completion/completions/velmora",
                     "share/zsh/site-functions/_velmora",
                     "share/fish/vendor_completions.d/velmora.fish",
                     f"share/applications/{ICON}.desktop", f"share/metainfo/{ICON}.metainfo.xml",
                     f"share/icons/hicolor/scalable/apps/{ICON}.svg",
                     "share/doc/velmora/LICENSE", "share/doc/velmora/Attribution.md",
                     "share/doc/velmora/permissions.html"):
            self.assertTrue((self.prefix / name).exists(), name)

    def test_the_icon_comes_in_every_size(self):
        icons = sorted((self.prefix / "share/icons/hicolor").glob(f"*/apps/{ICON}.png"))
        sizes = set()
        for icon in icons:
            data = icon.read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n", icon)
            width, height = struct.unpack(">II", data[16:24])
            self.assertEqual(icon.parent.parent.name, f"{width}x{height}")
            sizes.add(width)
            self.assertGreater(len(data), width * 8, f"{icon} is empty")
        self.assertEqual(sizes, set(SIZES))

    def test_the_installed_program_works(self):
        result = subprocess.run([self.prefix / "bin/velmora", "lookup", "--json", "学习"],
                                capture_output=True, text=True, check=False, timeout=TIMEOUT)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("xué xí", result.stdout)
        # The part that needs the desktop is found beside it.
        result = subprocess.run([self.prefix / "bin/velmora", "autostart", "status"],
                                capture_output=True, text=True, check=False, timeout=TIMEOUT,
                                env={**os.environ, "XDG_CONFIG_HOME": self.folder.name})
        self.assertEqual((result.returncode, result.stdout), (1, "off\n"))


if __name__ == "__main__":
    unittest.main()
