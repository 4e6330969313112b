# SPDX-License-Identifier: MIT
"""velmora as its users call it: arguments, input, output, exit status."""

import fcntl
import json
import os
import pty
import re
import select
import shutil
import signal
import struct
import subprocess
import tempfile
import termios
import unittest
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
BUILD = Path(os.environ["VELMORA_BUILD_FOLDER"])
VELMORA = BUILD / "velmora"
WORDS = ROOT / "Tests/Fixtures/CommandLine/words.u8"
TIMEOUT = 120
MEBIBYTE = 1 << 20


def velmora(*arguments, stdin=b"", program=VELMORA, environment=None):
    data = stdin.encode() if isinstance(stdin, str) else stdin
    return subprocess.run([program, *arguments], input=data, capture_output=True, check=False,
                          timeout=TIMEOUT, env=environment)


class CommandLineTest(unittest.TestCase):
    maxDiff = None

    def assert_answer(self, result, status, text):
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.stdout.decode(), text)
        self.assertEqual(result.returncode, status)

    def assert_error(self, result, *words):
        """Status 2, nothing on standard output, one clear line on standard error."""
        message = result.stderr.decode()
        self.assertEqual(result.returncode, 2, message)
        self.assertEqual(result.stdout, b"")
        self.assertEqual(message.count("\n"), 1, message)
        self.assertTrue(message.startswith("velmora"), message)
        self.assertNotRegex(message, r"[\x00-\x09\x0b-\x1f\x7f]")
        for word in words:
            self.assertIn(word, message)

    def json(self, result, status=0):
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.returncode, status)
        return json.loads(result.stdout)


class Lookup(CommandLineTest):
    def test_text_for_people(self):
        self.assert_answer(velmora("lookup", "--dictionary", WORDS, "学习"), 0, """\
学习 [學習]  xué xí  HSK 1
  v. to study; to learn
  n. learning; study

  我每天学习中文。
  Wǒ měi tiān xué xí Zhōng wén.
  I study Chinese every day.

Also
  学习  xué xí  to learn; to study

Characters
  学  xué  to learn; to study
  习  xí   to practice; to review
""")

    def test_traditional_text_is_shown_as_it_stands(self):
        self.assert_answer(velmora("lookup", "--dictionary", WORDS, "--offset", "2", "我是中國人"),
                           0, """\
中國人 [中国人]  Zhōng guó rén
  Chinese person; CL:個|个[ge4]

Characters
  中  zhōng  middle; China
  國  Guó    surname Guo
  人  rén    person; people
""")

    def test_json(self):
        result = self.json(velmora("lookup", "--json", "--offset", "1", "--dictionary", WORDS,
                                   "在中国人"))
        self.assertEqual(list(result), ["matchedText", "range", "entry", "characterBreakdown",
                                        "alternatives"])
        self.assertEqual(result["matchedText"], "中国人")
        self.assertEqual(result["range"], {"start": 1, "end": 4})
        entry = result["entry"]
        self.assertEqual(set(entry), {"id", "simplified", "traditional", "pinyinNumbered",
                                      "pinyinMarked", "syllables", "definitions", "examples"})
        self.assertEqual(entry["traditional"], "中國人")
        self.assertEqual(entry["pinyinMarked"], "Zhōng guó rén")
        self.assertRegex(entry["id"], r"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")
        self.assertEqual(entry["syllables"][1], {"numbered": "guo2", "marked": "guó", "tone": 2})
        self.assertEqual([e["simplified"] for e in result["characterBreakdown"]], list("中国人"))
        self.assertEqual(result["alternatives"], [])

    def test_alternatives_follow_the_first_entry(self):
        result = self.json(velmora("lookup", "--json", "--dictionary", WORDS, "国"))
        self.assertEqual(result["entry"]["pinyinNumbered"], "Guo2")
        self.assertEqual([e["pinyinNumbered"] for e in result["alternatives"]], ["guo2"])

    def test_the_level_is_there_where_it_is_known(self):
        self.assertEqual(self.json(velmora("lookup", "--json", "知道"))["entry"]["hskLevel"], 2)

    def test_offsets_count_characters(self):
        text = "👨‍👩‍👧e\u0301𠮷学习"
        result = self.json(velmora("lookup", "--json", "--offset", "3", text))
        self.assertEqual(result["range"], {"start": 3, "end": 5})

    def test_nothing_found(self):
        for arguments in (["--offset", "-1", "学习"], ["--offset=-1", "学习"],
                          ["--offset", "2", "学习"], ["--offset", "9223372036854775807", "学习"],
                          ["--offset", "-9223372036854775808", "学习"], ["abc"], ["。"], [""]):
            with self.subTest(arguments):
                self.assert_answer(velmora("lookup", "--json", *arguments), 1, "null\n")
                plain = velmora("lookup", *arguments)
                self.assertEqual((plain.returncode, plain.stdout), (1, b""))
                self.assertEqual(plain.stderr.decode().count("\n"), 1)

    def test_two_dashes_end_the_options(self):
        self.assertEqual(velmora("lookup", "--json", "--", "--offset").returncode, 1)
        self.assertEqual(velmora("lookup", "--", "学习").returncode, 0)
        self.assertEqual(velmora("lookup", "-").returncode, 1)

    def test_the_real_word_list(self):
        lists = BUILD / "Velmora_VelmoraCore.bundle/cedict_ts.u8"
        self.assertTrue(lists.is_file(), "the tests need the word list: scripts/fetch-dictionary")
        result = self.json(velmora("lookup", "--json", "--offset", "4", "我们喜欢图书馆"))
        self.assertEqual(result["matchedText"], "图书馆")
        self.assertEqual(result["entry"]["pinyinMarked"], "tú shū guǎn")
        self.assertIn("library", result["entry"]["definitions"][0]["glosses"])

    def test_wrong_usage(self):
        for arguments, word in (
                ([], "TEXT is missing"),
                (["a", "b"], "only one TEXT"),
                (["--offset"], "--offset needs a value"),
                (["--offset", "x", "学"], "not a whole number"),
                (["--offset", "", "学"], "not a whole number"),
                (["--offset", "1.5", "学"], "not a whole number"),
                (["--offset", "0x1", "学"], "not a whole number"),
                (["--offset", " 1", "学"], "not a whole number"),
                (["--offset", "+1", "学"], "not a whole number"),
                (["--offset", "1\x1b[31m", "学"], "not a whole number"),
                (["--offset", "9223372036854775808", "学"], "out of range"),
                (["--offset", "9" * 1000, "学"], "out of range"),
                (["--json=yes", "学"], "takes no value"),
                (["--nonsense", "学"], "unknown option --nonsense"),
                (["-x", "学"], "unknown option -x"),
                (["--json-lines", "学"], "standard input"),
                (["--json-lines", "--offset", "1"], "standard input"),
                ([b"\xff"], "TEXT is not UTF-8"),
                ([b"\xed\xa0\x80"], "TEXT is not UTF-8"),
                ([b"--\xff\x1b", "学"], "unknown option"),
                (["--offset", b"\xff", "学"], "not a whole number")):
            with self.subTest(arguments):
                self.assert_error(velmora("lookup", *arguments), "velmora lookup: ", word)


class Dictionary(CommandLineTest):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def file(self, data):
        path = self.folder / "words.u8"
        path.write_bytes(data)
        return path

    def test_the_seed_comes_first(self):
        result = self.json(velmora("lookup", "--json", "--dictionary", WORDS, "学习"))
        self.assertEqual(result["entry"]["definitions"][0]["partOfSpeech"], "v.")
        self.assertEqual(len(result["alternatives"]), 1)

    def test_files_that_cannot_be_used(self):
        pipe = self.folder / "pipe"
        os.mkfifo(pipe)
        cases = {
            "missing": (self.folder / "missing", "no such file"),
            "folder": (self.folder, "cannot be read"),
            "pipe": (pipe, "cannot be read"),
            "device": (Path("/dev/zero"), "cannot be read"),
            "empty name": ("", ""),
        }
        for name, (path, word) in cases.items():
            with self.subTest(name):
                for command in ("lookup", "segment"):
                    self.assert_error(velmora(command, "--dictionary", path, "学习"), word)

    def test_content_that_cannot_be_used(self):
        for name, data, word in (
                ("empty", b"", "holds no dictionary entry"),
                ("comments", b"# one\r\n# two\r\n", "holds no dictionary entry"),
                ("bytes", b"\xff\xfe\x00", "UTF-8"),
                ("lone surrogate", b"\xed\xa0\x80 \xed\xa0\x80 [a1] /b/\n", "UTF-8"),
                ("one endless line", b"x" * (50 * MEBIBYTE), "holds no dictionary entry"),
                ("NUL bytes", b"\0" * 1000, "holds no dictionary entry")):
            with self.subTest(name):
                self.assert_error(velmora("lookup", "--dictionary", self.file(data), "学习"), word)

    def test_content_that_can_be_used(self):
        line = "貓 猫 [mao1] /cat/".encode()
        for name, data in (
                ("no final newline", line),
                ("byte order mark", b"\xef\xbb\xbf" + line + b"\n"),
                ("a long line before", b"y" * (50 * MEBIBYTE) + b"\n" + line),
                ("NUL bytes before", b"\0\0\n" + line + b"\n")):
            with self.subTest(name):
                result = self.json(velmora("lookup", "--json", "--dictionary", self.file(data), "猫"))
                self.assertEqual(result["entry"]["traditional"], "貓")

    def test_what_a_file_says_cannot_steer_the_terminal(self):
        path = self.file("貓 猫 [mao1] /cat\x1b[2J\x07/\n".encode())
        result = velmora("lookup", "--dictionary", path, "猫")
        self.assertEqual(result.returncode, 0)
        self.assertNotIn(b"\x1b", result.stdout)
        self.assertNotIn(b"\x07", result.stdout)

    def test_bundle_beside_the_executable(self):
        program = self.folder / "velmora"
        shutil.copy2(VELMORA, program)
        bundle = self.folder / "Velmora_VelmoraCore.bundle"
        bundle.mkdir()
        self.assertEqual(velmora("lookup", "猫", program=program).returncode, 1)
        self.assertEqual(velmora("lookup", "学习", program=program).returncode, 0)
        (bundle / "cedict_ts.u8").write_bytes("貓 猫 [mao1] /cat/".encode())
        self.assertEqual(velmora("lookup", "猫", program=program).returncode, 0)
        (bundle / "cedict_ts.u8").write_bytes(b"\xff")
        broken = velmora("lookup", "学习", program=program)
        self.assertEqual((broken.returncode, broken.stderr), (0, b""))


class JsonLines(CommandLineTest):
    def answers(self, data, *arguments):
        result = velmora("lookup", "--json-lines", "--dictionary", WORDS, *arguments, stdin=data)
        self.assertEqual(result.stderr.decode(), "")
        self.assertEqual(result.returncode, 0)
        lines = result.stdout.decode().split("\n")
        self.assertEqual(lines.pop(), "")
        return [json.loads(line) for line in lines]

    def test_one_answer_per_line(self):
        found, nothing, second = self.answers(
            '{"text":"学习"}\n{"text":"abc","offset":1}\n{"offset":2,"text":"在中国"}')
        self.assertEqual(found["matchedText"], "学习")
        self.assertIsNone(nothing)
        self.assertEqual(second["range"], {"start": 1, "end": 3})

    def test_no_line_no_answer(self):
        self.assertEqual(self.answers(""), [])

    def test_line_ends(self):
        self.assertEqual([a["matchedText"] for a in
                          self.answers('{"text":"学习"}\r\n  {"text":"中文"}  \n')],
                         ["学习", "中文"])

    def test_offsets_outside_the_text_find_nothing(self):
        for offset in (-1, 2, 9223372036854775807, -9223372036854775808):
            self.assertEqual(self.answers(f'{{"text":"学习","offset":{offset}}}\n'), [None])

    def test_bad_lines(self):
        deep = '{"text":"学习","x":' + "[" * 16 + "]" * 16 + "}"
        cases = ["", " ", "\r", "nonsense", "{", '{"text":"学习"', '{"text":"学习"}{}', "[]", "null",
                 "3", '"学习"', "{}", '{"offset":0}', '{"text":3}', '{"text":null}', '{"text":["学"]}',
                 '{"text":"学","offset":3.7}', '{"text":"学","offset":true}',
                 '{"text":"学","offset":"1"}', '{"text":"学","offset":null}',
                 '{"text":"学","offset":1e0}', '{"text":"学","offset":0.0}',
                 '{"text":"学","offset":9223372036854775808}',
                 '{"text":"学","offset":' + "9" * 400 + "}", '{"text":"学","offset":1e999}',
                 '{"text":"\\ud800"}', "{'text':'学'}", '{"text":"学",}', deep, "[" * 100000,
                 '{"a":' * 100000]
        answers = self.answers("\n".join([*cases, '{"text":"学习"}']))
        self.assertEqual(len(answers), len(cases) + 1)
        for case, answer in zip(cases, answers):
            with self.subTest(case[:60]):
                self.assertEqual(list(answer), ["error"])
                self.assertIsInstance(answer["error"], str)
        self.assertEqual(answers[-1]["matchedText"], "学习")

    def test_sixteen_levels_are_read(self):
        line = '{"text":"学习","x":' + "[" * 15 + "]" * 15 + "}"
        self.assertEqual(self.answers(line)[0]["matchedText"], "学习")

    def test_bytes_that_are_not_utf8(self):
        answers = self.answers(b'{"text":"\xff"}\n{"text":"\xed\xa0\x80"}\n{"text":"\xe5\xad\xa6"}\n')
        self.assertEqual([list(a)[0] for a in answers], ["error", "error", "matchedText"])

    def test_long_lines(self):
        def line(size):
            frame = len('{"text":"","offset":0}'.encode())
            return b'{"text":"' + b"x" * (size - frame) + b'","offset":0}'
        longest, too_long, huge = line(MEBIBYTE), line(MEBIBYTE + 1), line(30 * MEBIBYTE)
        self.assertEqual(len(longest), MEBIBYTE)
        answers = self.answers(b"\n".join([longest, longest + b"\r", too_long, huge,
                                           '{"text":"学习"}'.encode()]))
        self.assertEqual(answers[:2], [None, None])
        for answer in answers[2:4]:
            self.assertIn("1 MiB", answer["error"])
        self.assertEqual(answers[4]["matchedText"], "学习")

    def test_an_endless_line_takes_no_memory(self):
        program = ("import resource, os, sys; resource.setrlimit(resource.RLIMIT_AS, "
                   "(300 << 20, 300 << 20)); os.execv(sys.argv[1], sys.argv[1:])")
        if (BUILD / "CMakeCache.txt").read_text().find("VELMORA_SANITIZE:STRING=a") >= 0:
            program = "import os, sys; os.execv(sys.argv[1], sys.argv[1:])"
        with subprocess.Popen(["python3", "-c", program, VELMORA, "lookup", "--json-lines",
                               "--dictionary", WORDS], stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            for _ in range(400):
                process.stdin.write(b"z" * MEBIBYTE)
            process.stdin.write(b'\n{"text":"\xe5\xad\xa6"}\n')
            out, err = process.communicate(timeout=TIMEOUT)
        self.assertEqual((process.returncode, err), (0, b""))
        self.assertEqual([list(json.loads(line))[0] for line in out.splitlines()],
                         ["error", "matchedText"])

    def test_each_answer_is_flushed(self):
        with subprocess.Popen([VELMORA, "lookup", "--json-lines", "--dictionary", WORDS],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
            for text in ("学习", "中国"):
                process.stdin.write(json.dumps({"text": text}).encode() + b"\n")
                process.stdin.flush()
                ready, _, _ = select.select([process.stdout], [], [], TIMEOUT)
                self.assertTrue(ready, "no answer before the end of the input")
                self.assertEqual(json.loads(process.stdout.readline())["matchedText"], text)
            process.stdin.close()
            self.assertEqual(process.wait(TIMEOUT), 0)

    def test_a_reader_that_goes_away(self):
        with subprocess.Popen([VELMORA, "lookup", "--json-lines", "--dictionary", WORDS],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as process:
            process.stdout.close()
            process.stdout = None
            try:
                for _ in range(1000):
                    process.stdin.write(b'{"text":"\xe5\xad\xa6"}\n')
                    process.stdin.flush()
            except BrokenPipeError:
                pass
            try:
                process.stdin.close()
            except BrokenPipeError:
                pass
            process.stdin = None
            self.assertIn(process.wait(TIMEOUT), (2, -signal.SIGPIPE))

    def test_an_output_that_is_full(self):
        with open("/dev/full", "wb") as full:
            result = subprocess.run([VELMORA, "lookup", "学习"], stdout=full, check=False,
                                    stderr=subprocess.PIPE, timeout=TIMEOUT)
        self.assertEqual(result.returncode, 2)
        self.assertIn(b"cannot be written", result.stderr)


class Segment(CommandLineTest):
    def test_tabs_when_piped(self):
        self.assert_answer(velmora("segment", "--dictionary", WORDS, "我学习，是中国人。"), 0,
                           "学习\txué xí\tto study; to learn; learning; study\n"
                           "中国人\tZhōng guó rén\tChinese person; CL:個|个[ge4]\n")

    def test_json(self):
        words = self.json(velmora("segment", "--json", "--dictionary", WORDS, "我学习中国"))
        self.assertEqual([w["matchedText"] for w in words], ["学习", "中国"])
        self.assertEqual(list(words[0]), ["matchedText", "range", "entry", "characterBreakdown",
                                          "alternatives"])
        self.assertEqual(words[1]["range"], {"start": 3, "end": 5})

    def test_standard_input_counts_over_all_lines(self):
        text = "一学习\r\n\n👨‍👩‍👧 中国\n人"
        words = self.json(velmora("segment", "--json", "--dictionary", WORDS, stdin=text))
        self.assertEqual([(w["matchedText"], w["range"]["start"]) for w in words],
                         [("学习", 1), ("中国", 7), ("人", 10)])

    def test_words_that_begin_before_the_position(self):
        words = self.json(velmora("segment", "--json", "--dictionary", WORDS, "卡拉OK人"))
        self.assertEqual([w["matchedText"] for w in words], ["卡拉OK", "人"])

    def test_nothing_found(self):
        for text in ("", "abc", "\n\n"):
            with self.subTest(text):
                self.assert_answer(velmora("segment", "--json", stdin=text), 1, "[]\n")
                self.assertEqual(velmora("segment", stdin=text).returncode, 1)
        self.assert_answer(velmora("segment", "--json", ""), 1, "[]\n")

    def test_bad_input(self):
        self.assert_error(velmora("segment", stdin=b"\xe5\xad"), "standard input is not UTF-8")
        self.assert_error(velmora("segment", "--json", stdin=b"x" * (MEBIBYTE + 1)), "1 MiB")
        self.assert_error(velmora("segment", stdin=b"x\n" * (33 * MEBIBYTE)), "64 MiB")
        self.assert_error(velmora("segment", b"\xff"), "TEXT is not UTF-8")
        self.assert_error(velmora("segment", "a", "b"), "only one TEXT")
        self.assert_error(velmora("segment", "--offset", "1", "a"), "unknown option --offset")
        folder = os.open(BUILD, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        result = subprocess.run([VELMORA, "segment"], stdin=folder, capture_output=True,
                                check=False, timeout=TIMEOUT)
        self.assert_error(result, "cannot be read")

    def test_a_novel(self):
        text = ("我学习中国人。" * 1000 + "\n") * 20
        words = velmora("segment", "--dictionary", WORDS, stdin=text).stdout.decode().splitlines()
        self.assertEqual(len(words), 2 * 20000)


class Pinyin(CommandLineTest):
    def test_text(self):
        self.assert_answer(velmora("pinyin", "xue2 xi2"), 0, "xué xí\n")
        self.assert_answer(velmora("pinyin", "lu:4  nv3 Ni3 hao3"), 0, "lǜ nǚ Nǐ hǎo\n")
        self.assert_answer(velmora("pinyin", ""), 0, "\n")

    def test_json(self):
        self.assertEqual(self.json(velmora("pinyin", "--json", "lu:4 ma5")),
                         [{"numbered": "lu:4", "marked": "lǜ", "tone": 4},
                          {"numbered": "ma5", "marked": "ma", "tone": 0}])
        self.assertEqual(self.json(velmora("pinyin", "--json", "")), [])

    def test_bad_input(self):
        self.assert_error(velmora("pinyin"), "TEXT is missing")
        self.assert_error(velmora("pinyin", b"\xff"), "not UTF-8")
        self.assert_error(velmora("pinyin", "xue2", "xi2"), "only one TEXT")
        self.assert_error(velmora("pinyin", "--dictionary", WORDS, "xue2"), "unknown option")


class Align(CommandLineTest):
    def test_json(self):
        result = self.json(velmora("align", "--json", "--reference", "没有",
                                   "--reference", "我们学习中文", "学刁中文"))
        self.assertEqual(result, {"text": "学习中文", "referenceIndex": 1,
                                  "characterRange": {"start": 2, "end": 6}})
        self.assertEqual(list(result), ["text", "referenceIndex", "characterRange"])

    def test_text(self):
        self.assert_answer(velmora("align", "--reference=我们学习中文", "学刁中文"), 0,
                           "学习中文\treference 0, characters 2 to 6\n")

    def test_nothing_found(self):
        for arguments in (["--reference", "你好吗", "完全不同"], ["--reference", "学习", ""],
                          ["--reference", "", "学"]):
            with self.subTest(arguments):
                self.assert_answer(velmora("align", "--json", *arguments), 1, "null\n")
                self.assertEqual(velmora("align", *arguments).returncode, 1)

    def test_bad_input(self):
        self.assert_error(velmora("align", "学习"), "--reference is missing")
        self.assert_error(velmora("align", "--reference", "学习"), "LINE is missing")
        self.assert_error(velmora("align", "--reference"), "needs a value")
        self.assert_error(velmora("align", "--reference", b"\xff", "学"), "not UTF-8")
        self.assert_error(velmora("align", "--reference", "学", b"\xff"), "not UTF-8")


class Help(CommandLineTest):
    def test_general(self):
        for option in ("--help", "-h"):
            result = velmora(option)
            self.assertEqual((result.returncode, result.stderr), (0, b""))
            for word in ("lookup", "segment", "pinyin", "align", "probe", "recognize", "doctor",
                         "CC BY-SA 4.0"):
                self.assertIn(word, result.stdout.decode())

    def test_of_each_command(self):
        for command in ("lookup", "segment", "pinyin", "align"):
            for arguments in (["--help"], ["-h"], ["--json", "--help"]):
                result = velmora(command, *arguments)
                self.assertEqual((result.returncode, result.stderr), (0, b""))
                self.assertTrue(result.stdout.decode().startswith(f"usage: velmora {command}"))
        self.assertEqual(velmora("lookup", "--json", "--", "--help").stdout, b"null\n")

    def test_version(self):
        project = re.search(r"project\(Velmora VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text())
        self.assert_answer(velmora("--version"), 0, f"velmora {project[1]}\n")

    def test_unknown_commands(self):
        self.assert_error(velmora("translate"), "unknown command translate")
        self.assert_error(velmora("--translate"), "unknown option --translate")
        self.assert_error(velmora(b"\xff\x1b[2J"), "unknown command")
        self.assert_error(velmora("", "x"), "unknown command")


class ApplicationPart(CommandLineTest):
    """Commands that need the desktop go to velmora-app with the same arguments."""

    COMMANDS = ("probe", "recognize", "doctor", "settings", "onboarding", "toggle", "diagnostics",
                "quit", "autostart")

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "bin").mkdir()
        self.program = self.root / "bin/velmora"
        shutil.copy2(VELMORA, self.program)

    def put_application(self, path):
        application = self.root / path
        application.parent.mkdir(parents=True, exist_ok=True)
        application.write_text('#!/bin/sh\nprintf "%s\\n" "$#" "$@"\nexit 7\n')
        application.chmod(0o755)
        return application

    def test_it_gets_the_arguments_and_gives_the_status(self):
        for path in ("bin/velmora-app", "libexec/velmora/velmora-app", "libexec/velmora-app"):
            with self.subTest(path):
                application = self.put_application(path)
                for arguments in ([], ["doctor", "--json"], ["probe", "--at", "1,2", "--help"],
                                  ["recognize", "--", "a b", b"\xff"]):
                    result = velmora(*arguments, program=self.program)
                    expected = [str(len(arguments)).encode()]
                    expected += [a if isinstance(a, bytes) else a.encode() for a in arguments]
                    self.assertEqual(result.stdout.splitlines(), expected)
                    self.assertEqual(result.returncode, 7)
                application.unlink()

    def test_it_is_found_through_a_link(self):
        self.put_application("bin/velmora-app")
        link = self.root / "velmora"
        link.symlink_to(self.program)
        self.assertEqual(velmora("quit", program=link).returncode, 7)

    def test_without_it(self):
        for arguments in ([], *([command] for command in self.COMMANDS)):
            with self.subTest(arguments):
                self.assert_error(velmora(*arguments, program=self.program), "not installed")

    def test_that_cannot_be_executed(self):
        self.put_application("bin/velmora-app").write_bytes(b"\x7fELF nonsense")
        self.assert_error(velmora("doctor", program=self.program), "cannot be executed")


class Terminal(CommandLineTest):
    """What a person sees: colours, and lines that fit."""

    def on_terminal(self, *arguments, columns=60, **environment):
        leader, follower = pty.openpty()
        fcntl.ioctl(follower, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        variables = {k: v for k, v in os.environ.items() if k != "NO_COLOR"}
        variables.update({"TERM": "xterm-256color", **environment})
        with subprocess.Popen([VELMORA, *arguments], stdin=subprocess.DEVNULL, stdout=follower,
                              stderr=subprocess.DEVNULL, env=variables) as process:
            os.close(follower)
            data = b""
            while True:
                try:
                    piece = os.read(leader, 65536)
                except OSError:
                    break
                if not piece:
                    break
                data += piece
            self.assertEqual(process.wait(TIMEOUT), 0)
        os.close(leader)
        return data.decode().replace("\r\n", "\n")

    @staticmethod
    def columns_of(line):
        import unicodedata
        return sum(0 if unicodedata.combining(c) else
                   2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in line)

    def test_tones_have_colours(self):
        text = self.on_terminal("lookup", "--dictionary", WORDS, "妈妈")
        self.assertIn("\x1b[31mmā\x1b[0m \x1b[90mma\x1b[0m", text)
        text = self.on_terminal("pinyin", "ma1 ma2 ma3 ma4 ma5")
        self.assertEqual(re.findall(r"\x1b\[(\d+)m[^\x1b]+\x1b\[0m", text),
                         ["31", "33", "32", "94", "90"])

    def test_no_colours_where_they_are_not_wanted(self):
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}, {"TERM": ""}):
            with self.subTest(environment):
                text = self.on_terminal("lookup", "--dictionary", WORDS, "妈妈", **environment)
                self.assertNotIn("\x1b", text)
        self.assertIn("\x1b", self.on_terminal("pinyin", "ma1", NO_COLOR=""))

    def test_json_has_no_colours(self):
        json.loads(self.on_terminal("lookup", "--json", "学习"))

    def test_lines_fit(self):
        for columns in (30, 40, 60, 200):
            for arguments in (["lookup", "妈妈"], ["lookup", "学习"], ["segment", "妈妈学习中国人"]):
                with self.subTest(columns=columns, arguments=arguments):
                    text = self.on_terminal(*arguments, "--dictionary", WORDS, columns=columns,
                                            NO_COLOR="1")
                    widest = max(map(self.columns_of, text.splitlines()))
                    self.assertLessEqual(widest, min(columns, 100))
                    if columns == 40 and "妈妈" in arguments:
                        self.assertIn("long enough", " ".join(text.split()))

    def test_words_stand_in_columns(self):
        text = self.on_terminal("segment", "--dictionary", WORDS, "学习中国人", columns=80, NO_COLOR="1")
        self.assertEqual(text, "学习    xué xí         to study; to learn; learning; study\n"
                               "中国人  Zhōng guó rén  Chinese person; CL:個|个[ge4]\n")


if __name__ == "__main__":
    unittest.main()
