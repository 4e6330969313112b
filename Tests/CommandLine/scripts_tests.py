# SPDX-License-Identifier: MIT
"""The other scripts: what they install, what they say, how they fail."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
SCRIPTS = ("build", "run", "test", "fetch-dictionary", "fuzz", "benchmark", "format", "tidy",
           "check-layering", "install-dependencies")
PURPOSES = ("build", "dictionary", "run", "demo", "check", "test", "benchmark", "desktop",
            "desktop-all")


class EveryScript(unittest.TestCase):
    def test_help(self):
        for name in SCRIPTS:
            with self.subTest(name):
                result = subprocess.run([ROOT / "scripts" / name, "--help"], text=True, check=False,
                                        capture_output=True, timeout=60)
                self.assertEqual((result.returncode, result.stderr), (0, ""))
                self.assertGreater(len(result.stdout), 60)
                self.assertNotIn("SPDX", result.stdout)

    def test_wrong_usage(self):
        for name in SCRIPTS:
            with self.subTest(name):
                result = subprocess.run([ROOT / "scripts" / name, "--nonsense"], text=True,
                                        check=False, capture_output=True, timeout=60)
                self.assertEqual(result.returncode, 2, result.stderr)
                self.assertNotIn("Traceback", result.stderr)

    def test_continuous_integration_runs_all_tests(self):
        text = (ROOT / ".ci/run").read_text()
        self.assertIn("scripts/test", text)
        self.assertIn("--all", text)
        self.assertTrue(os.access(ROOT / ".ci/run", os.X_OK))


def packages_of(purpose):
    """The packages of one section, sorted."""
    text = (ROOT / "scripts/packages.txt").read_text()
    section = text.split(f"[{purpose}]\n", 1)[1].split("\n[", 1)[0]
    return sorted(line.split()[0] for line in section.splitlines() if line and line[0] != "#")


class InstallDependencies(unittest.TestCase):
    """With a dpkg-query and an apt-get that do what the test says."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.installed = self.folder / "installed"
        self.calls = self.folder / "calls"
        self.installed.write_text("")
        self.calls.write_text("")
        self.refused = ""
        self.put("dpkg-query", f'while read -r name; do echo "$name installed"; done <{self.installed}')
        self.put("sudo", 'exec "$@"')

    def put(self, name, script):
        path = self.folder / name
        path.write_text(f"#!/bin/sh\n{script}\n")
        path.chmod(0o755)

    def run_script(self, *arguments, refuse="none"):
        # Installs what is asked for, all or nothing, but never the package it refuses.
        self.put("apt-get", f'''
            echo "$*" >>{self.calls}
            take=
            for word in "$@"; do
                case $word in
                    {refuse}) exit 100 ;;
                    install) take=1 ;;
                    -*) ;;
                    *) [ -z "$take" ] || wanted="$wanted $word" ;;
                esac
            done
            for word in $wanted; do echo "$word" >>{self.installed}; done''')
        environment = {**os.environ, "PATH": f"{self.folder}:{os.environ['PATH']}"}
        return subprocess.run([ROOT / "scripts/install-dependencies", *arguments], text=True,
                              env=environment, capture_output=True, check=False, timeout=60)

    def test_lists_every_purpose(self):
        for purpose in PURPOSES:
            with self.subTest(purpose):
                result = self.run_script("--list", purpose)
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertEqual(self.calls.read_text(), "")

    def test_package_names_are_package_names(self):
        packages = [line.split()[0] for line in (ROOT / "scripts/packages.txt").read_text().splitlines()
                    if line and line[0] not in "#["]
        for package in packages:
            self.assertRegex(package, r"^[a-z0-9][a-z0-9.+-]+$")

    def test_installs_what_is_missing_and_then_nothing(self):
        first = self.run_script("benchmark")
        self.assertEqual(first.returncode, 0, first.stderr)
        self.assertEqual(sorted(self.installed.read_text().split()),
                         packages_of("benchmark"))
        self.assertIn("libmarisa-dev", first.stderr)
        calls = self.calls.read_text()
        again = self.run_script("benchmark")
        self.assertEqual((again.returncode, again.stderr), (0, ""))
        self.assertEqual(self.calls.read_text(), calls)

    def test_only_what_is_missing(self):
        self.installed.write_text("libmarisa-dev\n")
        self.run_script("benchmark")
        self.assertNotIn("libmarisa-dev", self.calls.read_text())
        self.assertIn("libbenchmark-dev", self.calls.read_text())

    def test_a_package_that_cannot_be_had_is_named(self):
        result = self.run_script("benchmark", refuse="libmarisa-dev")
        self.assertEqual(result.returncode, 2)
        self.assertIn("could not be installed: libmarisa-dev", result.stderr)
        self.assertIn("libbenchmark-dev", self.installed.read_text())
        self.assertRegex(self.calls.read_text(), re.compile(r"\bupdate$", re.MULTILINE))

    def test_a_command_that_somebody_else_installed_counts(self):
        self.put("npm", "exit 0")
        self.put("python3", "exit 0")
        self.installed.write_text("ca-certificates\n")
        result = self.run_script("dictionary")
        self.assertEqual((result.returncode, self.calls.read_text()), (0, ""))

    def test_unknown_purpose(self):
        result = self.run_script("nonsense")
        self.assertEqual(result.returncode, 2)
        self.assertIn("nonsense", result.stderr)
        self.assertEqual(self.run_script().returncode, 2)


class Completion(unittest.TestCase):
    COMMANDS = ("lookup", "segment", "pinyin", "align", "probe", "recognize", "doctor", "settings",
                "onboarding", "toggle", "diagnostics", "quit", "autostart")

    def complete(self, *words):
        script = (f"source {ROOT}/Packaging/completions/velmora.bash; compopt() {{ :; }}; "
                  'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _velmora; printf "%s\\n" "${COMPREPLY[@]}"')
        return subprocess.run(["bash", "-c", script, "bash", "velmora", *words], text=True,
                              capture_output=True, check=True, timeout=60).stdout.split()

    def test_commands_and_options(self):
        self.assertEqual(set(self.complete("")), {*self.COMMANDS, "--help", "--version"})
        self.assertEqual(self.complete("loo"), ["lookup"])
        self.assertEqual(self.complete("lookup", "--json"), ["--json", "--json-lines"])
        self.assertEqual(self.complete("autostart", "o"), ["on", "off"])
        self.assertEqual(self.complete("lookup", "--offset", ""), [])

    def test_every_shell_and_the_manual_know_every_command(self):
        for name in ("completions/velmora.bash", "completions/_velmora",
                     "completions/velmora.fish", "velmora.1"):
            text = (ROOT / "Packaging" / name).read_text()
            for command in self.COMMANDS:
                with self.subTest(file=name, command=command):
                    self.assertIn(command, text)


if __name__ == "__main__":
    unittest.main()
