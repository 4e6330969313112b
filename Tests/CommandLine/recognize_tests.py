# SPDX-License-Identifier: MIT
"""velmora recognize as its users call it, with the languages that the system has, and what doctor
says where it has none."""

import json
import os
import random
import resource
import struct
import subprocess
import tempfile
import unittest
import zlib
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
BUILD = Path(os.environ["VELMORA_BUILD_FOLDER"])
VELMORA = BUILD / "velmora"
WORDS = ROOT / "Tests/Fixtures/CommandLine/recognize-words.u8"
PICTURES = ROOT / "Tests/Fixtures/Recognition"
TIMEOUT = 120
GIBIBYTE = 1 << 30


def velmora(*arguments, **variables):
    return subprocess.run([VELMORA, *arguments], capture_output=True, check=False, timeout=TIMEOUT,
                          stdin=subprocess.DEVNULL, env={**os.environ, **variables})


def write_png(path, width, height, rows, *, bits, colour):
    """A picture file of these packed rows."""
    def chunk(kind, content):
        return (struct.pack(">I", len(content)) + kind + content +
                struct.pack(">I", zlib.crc32(kind + content)))
    packer = zlib.compressobj(1)
    data = b"".join(packer.compress(b"\0" + row) for row in rows) + packer.flush()
    path.write_bytes(b"\x89PNG\r\n\x1a\n" +
                     chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, bits, colour, 0, 0, 0)) +
                     chunk(b"IDAT", data) + chunk(b"IEND", b""))


def size_of_png(path):
    return struct.unpack(">II", path.read_bytes()[16:24])


class RecognizeTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="velmora-recognize-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def answer(self, *arguments, status=0):
        result = velmora("recognize", "--json", "--dictionary", WORDS, *arguments)
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.returncode, status)
        answer = json.loads(result.stdout)
        self.assertEqual(list(answer), ["lines", "probe", "match"])
        return answer

    def assert_rect(self, rect, width, height):
        self.assertEqual(set(rect), {"x", "y", "width", "height"})
        self.assertGreater(rect["width"], 0)
        self.assertGreater(rect["height"], 0)
        self.assertGreaterEqual(rect["x"], -1)
        self.assertGreaterEqual(rect["y"], -1)
        self.assertLessEqual(rect["x"] + rect["width"], width + 1)
        self.assertLessEqual(rect["y"] + rect["height"], height + 1)

    def assert_lines(self, lines, picture):
        width, height = size_of_png(picture)
        for line in lines:
            self.assertEqual(set(line), {"box", "candidates"})
            self.assert_rect(line["box"], width, height)
            self.assertIn(len(line["candidates"]), (1, 2, 3))
            for candidate in line["candidates"]:
                self.assertEqual(set(candidate), {"text", "confidence", "characters"})
                self.assertTrue(0 <= candidate["confidence"] <= 1)
                self.assertEqual(len(candidate["characters"]), len(candidate["text"]))
                for rect in filter(None, candidate["characters"]):
                    self.assert_rect(rect, width, height)

    def assert_error(self, result, *words):
        message = result.stderr.decode()
        self.assertEqual(result.returncode, 2, message)
        self.assertEqual(result.stdout, b"")
        self.assertEqual(message.count("\n"), 1, message)
        self.assertTrue(message.startswith("velmora"), message)
        for word in words:
            self.assertIn(word, message)


class WholePicture(RecognizeTest):
    def test_lines_and_nothing_else(self):
        picture = PICTURES / "simplified-light.png"
        answer = self.answer(picture)
        self.assertIsNone(answer["probe"])
        self.assertIsNone(answer["match"])
        self.assertTrue(answer["lines"])
        self.assert_lines(answer["lines"], picture)

    def test_characters_stand_in_their_line_from_left_to_right(self):
        for line in self.answer(PICTURES / "simplified-light.png")["lines"]:
            characters = [rect for rect in line["candidates"][0]["characters"] if rect]
            middles = [rect["x"] + rect["width"] / 2 for rect in characters]
            self.assertEqual(middles, sorted(middles))
            for rect in characters:
                middle = rect["y"] + rect["height"] / 2
                self.assertTrue(line["box"]["y"] <= middle <= line["box"]["y"] +
                                line["box"]["height"])

    def test_text_for_people(self):
        result = velmora("recognize", PICTURES / "simplified-light.png")
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.returncode, 0)
        for line in result.stdout.decode().splitlines():
            self.assertRegex(line, r"^[01]\.\d\d {2,4}\S")

    def test_nothing_in_it(self):
        picture = self.folder / "blank.png"
        write_png(picture, 300, 200, [b"\xff" * 300] * 200, bits=8, colour=0)
        self.assertEqual(self.answer(picture, status=1)["lines"], [])
        result = velmora("recognize", picture)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (1, b"", b""))


class AtAPoint(RecognizeTest):
    PICTURE = PICTURES / "simplified-light.png"

    def test_probe_and_match(self):
        width, height = size_of_png(self.PICTURE)
        line = self.answer(self.PICTURE)["lines"][0]
        text = line["candidates"][0]["text"]
        for offset, rect in enumerate(line["candidates"][0]["characters"]):
            if rect is None or text[offset] != "书":
                continue
            middle = (rect["x"] + rect["width"] / 2, rect["y"] + rect["height"] / 2)
            answer = self.answer("--at", f"{middle[0]},{middle[1]}", self.PICTURE)
            probe = answer["probe"]
            self.assertEqual(set(probe), {"text", "hoveredCharacterOffset", "source", "anchorRect",
                                          "via"})
            self.assertEqual(probe["text"][probe["hoveredCharacterOffset"]], text[offset])
            self.assertEqual(probe["source"], "hoveredText")
            self.assertEqual(probe["via"], "recognition")
            anchor = probe["anchorRect"]
            self.assert_rect(anchor, width, height)
            self.assertTrue(anchor["x"] <= middle[0] <= anchor["x"] + anchor["width"])
            self.assertTrue(anchor["y"] <= middle[1] <= anchor["y"] + anchor["height"])
            match = answer["match"]
            self.assertEqual(set(match), {"matchedText", "range", "entry", "characterBreakdown",
                                          "alternatives"})
            self.assertEqual(match["matchedText"], "图书馆")
            start, end = match["range"]["start"], match["range"]["end"]
            self.assertEqual(probe["text"][start:end], "图书馆")
            self.assert_lines(answer["lines"], self.PICTURE)
            return
        self.fail("the picture shows no 书: " + text)

    def test_nothing_there(self):
        for point in ("1,1", "100000,5", "-20,-20"):
            answer = self.answer("--at", point, self.PICTURE, status=1)
            self.assertIsNone(answer["probe"])
            self.assertIsNone(answer["match"])
            self.assert_lines(answer["lines"], self.PICTURE)

    def test_text_for_people(self):
        result = velmora("recognize", "--dictionary", WORDS, "--at", "220,55", self.PICTURE)
        self.assertEqual(result.stderr.decode(), "")
        self.assertIn("by recognition", result.stdout.decode())

    def test_every_attempt_is_explained(self):
        result = velmora("recognize", "--dictionary", WORDS, "--explain", "--at", "220,55",
                         self.PICTURE)
        explanation = result.stderr.decode()
        self.assertRegex(explanation, r"(?m)^ +\d+\.\d ms  capture: ")
        self.assertTrue(explanation.endswith("found by recognition\n"), explanation)


class Annotation(RecognizeTest):
    def test_a_picture_of_the_same_size(self):
        out = self.folder / "out.png"
        picture = PICTURES / "simplified-light.png"
        self.answer("--annotate", out, picture)
        self.assertEqual(size_of_png(out), size_of_png(picture))
        self.assertNotEqual(out.read_bytes(), picture.read_bytes())
        again = self.folder / "again.png"
        self.answer("--annotate", again, "--at", "220,55", picture)
        self.assertEqual(size_of_png(again), size_of_png(picture))

    def test_that_cannot_be_written(self):
        out = self.folder / "no" / "out.png"
        self.assert_error(velmora("recognize", "--annotate", out, PICTURES / "mixed.png"), "out.png")


class WrongUsage(RecognizeTest):
    def test_arguments(self):
        picture = PICTURES / "mixed.png"
        for arguments in ((), (picture, picture), ("--at", picture), ("--at", "3", picture),
                          ("--at", "a,b", picture), ("--at", "nan,1", picture),
                          ("--at", "inf,1", picture), ("--at", "1,2,3", picture),
                          ("--unknown", picture), ("--dictionary", "/nonexistent", picture),
                          ("--annotate",)):
            self.assert_error(velmora("recognize", *arguments))

    def test_pictures_that_cannot_be_read(self):
        text = self.folder / "text.png"
        text.write_text("not a picture")
        cut = self.folder / "cut.png"
        cut.write_bytes((PICTURES / "mixed.png").read_bytes()[:60])
        for picture in (self.folder, self.folder / "missing.png", text, cut, Path("/dev/null")):
            self.assert_error(velmora("recognize", picture), picture.name)

    def test_two_dashes_end_the_options(self):
        picture = self.folder / "--json"
        picture.write_bytes((PICTURES / "simplified-light.png").read_bytes())
        result = subprocess.run([VELMORA, "recognize", "--", "--json"], capture_output=True,
                                check=False, timeout=TIMEOUT, cwd=self.folder)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertNotEqual(result.stdout[:1], b"{")


class OddPictures(RecognizeTest):
    def assert_memory_is_bounded(self):
        peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss * 1024
        self.assertLess(peak, 1.5 * GIBIBYTE)

    def test_one_pixel(self):
        picture = self.folder / "one.png"
        write_png(picture, 1, 1, [b"\0"], bits=8, colour=0)
        self.assertEqual(self.answer(picture, status=1)["lines"], [])
        self.assertEqual(self.answer("--at", "0,0", picture, status=1)["lines"], [])

    def test_twenty_thousand_by_twenty_thousand(self):
        picture = self.folder / "huge.png"
        write_png(picture, 20000, 20000, (b"\xaa" * 2500 for _ in range(20000)), bits=1, colour=0)
        self.assert_error(velmora("recognize", picture), "megapixels")
        self.assert_memory_is_bounded()

    def test_very_wide_and_very_high(self):
        for width, height in ((20000, 400), (400, 20000)):
            picture = self.folder / "long.png"
            row = b"\xf0" * (width // 8)
            write_png(picture, width, height, (row for _ in range(height)), bits=1, colour=0)
            self.assertIn(velmora("recognize", picture).returncode, (0, 1))
            result = velmora("recognize", "--at", f"{width - 1},{height - 1}", picture)
            self.assertIn(result.returncode, (0, 1), result.stderr)
        self.assert_memory_is_bounded()

    def test_noise(self):
        noise = random.Random(5)
        picture = self.folder / "noise.png"
        write_png(picture, 1920, 1080, (noise.randbytes(1920 * 3) for _ in range(1080)), bits=8,
                  colour=2)
        for arguments in ((picture,), ("--at", "960,540", picture)):
            result = velmora("recognize", "--json", "--dictionary", WORDS, *arguments)
            self.assertIn(result.returncode, (0, 1))
            for line in json.loads(result.stdout)["lines"]:
                for candidate in line["candidates"]:
                    self.assertLess(candidate["confidence"], 0.99)
        self.assert_memory_is_bounded()


class MissingLanguages(RecognizeTest):
    """What is said where the languages' data is missing or damaged."""

    def languages(self, **contents):
        """A folder with this data; None stands for the system's own."""
        system = next(folder for folder in ("/usr/share/tesseract-ocr/5/tessdata",
                                            "/usr/share/tesseract-ocr/4.00/tessdata",
                                            "/usr/share/tessdata")
                      if (Path(folder) / "chi_sim.traineddata").exists())
        for language, content in contents.items():
            path = self.folder / f"{language}.traineddata"
            data = (Path(system) / path.name).read_bytes()
            path.write_bytes(data if content is None else data[:content])
        return str(self.folder)

    def doctor(self, folder):
        result = velmora("doctor", "--json", TESSDATA_PREFIX=folder)
        checks = json.loads(result.stdout)["checks"]
        return next(check for check in checks if check["name"] == "recognition")

    def test_all_there(self):
        self.assertTrue(self.doctor(self.languages(chi_sim=None, chi_tra=None))["ok"])

    def test_one_missing(self):
        check = self.doctor(self.languages(chi_tra=None))
        self.assertFalse(check["ok"])
        self.assertIn("chi_sim", check["detail"])
        self.assertNotIn("chi_tra", check["detail"])
        self.assertRegex(check["mend"], "chi.sim")
        self.assertNotRegex(check["mend"], "chi.tra")

    def test_one_damaged(self):
        check = self.doctor(self.languages(chi_sim=None, chi_tra=500000))
        self.assertFalse(check["ok"])
        self.assertIn("the data for chi_tra cannot be loaded", check["detail"])
        self.assertRegex(check["mend"], "chi.tra")

    def test_what_is_there_is_read(self):
        folder = self.languages(chi_sim=None, chi_tra=1000)
        result = velmora("recognize", PICTURES / "simplified-light.png", TESSDATA_PREFIX=folder)
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_recognition_says_why_it_is_silent(self):
        folder = self.languages(chi_sim=100, chi_tra=100)
        result = velmora("recognize", "--explain", "--at", "220,55", "--dictionary", WORDS,
                         PICTURES / "simplified-light.png", TESSDATA_PREFIX=folder)
        self.assertEqual(result.returncode, 1)
        self.assertIn("no text recognition: recognition data for simplified Chinese is damaged: "
                      "reinstall tesseract-ocr-chi-sim", result.stderr.decode())


if __name__ == "__main__":
    unittest.main()
