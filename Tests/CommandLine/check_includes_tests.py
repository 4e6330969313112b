# SPDX-License-Identifier: MIT
"""The check of the tests' includes on small trees, good and bad."""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["VELMORA_SOURCE_FOLDER"])
PRECOMPILED = """set(headers <string> <vector>)
set(toolkit <QString>)
"""
TOOLKIT = """class QString;
class Q_CORE_EXPORT QString
{
public:
    static QString number(int value);
};
"""


class CheckIncludes(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Path(folder.name)
        self.put("CMake/VelmoraPrecompiledHeaders.cmake", PRECOMPILED)
        self.put("toolkit/QString", TOOLKIT)
        command = f"c++ -isystem {self.tree}/toolkit -c x.cpp"
        self.put("build/compile_commands.json", json.dumps([{"file": "x.cpp", "command": command}]))

    def put(self, path, text):
        file = self.tree / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def precompile(self, headers):
        self.put("CMake/VelmoraPrecompiledHeaders.cmake", f"set(headers {headers})\n")

    def check(self, text):
        self.put("Tests/Some/SomeTests.cpp", text)
        return subprocess.run([sys.executable, "-B", ROOT / "scripts/support/check_includes.py", self.tree,
                               self.tree / "build"], text=True, capture_output=True, check=False)

    def assert_good(self, text):
        result = self.check(text)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def assert_lacks(self, text, *names):
        result = self.check(text)
        self.assertEqual(result.returncode, 1, result.stdout)
        said = [line.split(" declares ")[1].split(" ")[0] for line in result.stderr.splitlines()]
        self.assertEqual(sorted(said), sorted(names), result.stderr)
        self.assertTrue(result.stderr.startswith("Tests/Some/SomeTests.cpp: "), result.stderr)

    def test_what_is_included_is_content(self):
        self.assert_good("#include <vector>\nstd::vector<int> values;\n")

    def test_a_class_of_the_standard_library(self):
        self.assert_lacks("std::vector<int> values;\n", "vector")

    def test_a_function_of_the_standard_library(self):
        self.precompile("<algorithm> <vector>")
        self.assert_lacks("#include <vector>\nvoid f(std::vector<int>& v) { std::partial_sort_copy(v); }\n",
                          "partial_sort_copy")

    def test_a_range_algorithm(self):
        self.precompile("<algorithm> <vector>")
        text = "#include <vector>\nbool f(std::vector<int>& v) { return std::ranges::any_of(v, g); }\n"
        self.assert_lacks(text, "any_of")
        self.assert_good("#include <algorithm>\n" + text)

    def test_a_name_within_another(self):
        self.precompile("<thread>")
        self.assert_lacks("auto f() { std::this_thread::sleep_for(std::chrono::duration_cast<T>(g())); }\n",
                          "duration_cast", "sleep_for")

    def test_functions_for_files(self):
        self.precompile("<filesystem>")
        self.assert_lacks("void f() { std::filesystem::create_directories(std::filesystem::temp_directory_path()); }\n",
                          "create_directories", "temp_directory_path")

    def test_a_type_that_is_announced_only(self):
        self.precompile("<fstream> <string>")
        # The header of strings announces streams.
        self.assert_lacks("#include <string>\nstd::ifstream file;\n", "ifstream")

    def test_the_toolkit(self):
        text = "void f() { QString::number(1); }\n"
        self.assert_lacks(text, "QString")
        self.assert_good("#include <QString>\n" + text)

    def test_the_framework(self):
        self.precompile("<gtest/gtest.h>")
        text = "class Fixture : public ::testing::Test {};\nTEST(A, b) { EXPECT_EQ(1, 1); }\n"
        self.assert_lacks(text, "Test", "TEST", "EXPECT_EQ")
        self.assert_lacks("auto f() { return ::testing::AssertionSuccess(); }\n", "AssertionSuccess")
        self.assert_good("#include <gtest/gtest.h>\n" + text)

    def test_what_an_own_header_brings_along(self):
        self.put("Tests/Support/Values.h", "#include <vector>\n")
        self.assert_good('#include "Tests/Support/Values.h"\nstd::vector<int> values;\n')

    def test_own_names(self):
        self.assert_good("struct QString {};\nQString text;\n")

    def test_comments_and_texts_name_nothing(self):
        self.assert_good('// std::vector of QString\nconst char* a = "std::vector"; /* EXPECT_EQ(1, 1) */\n'
                         'const char* b = R"(QString std::thread)";\n')

    def test_headers_of_tests_are_looked_at_too(self):
        self.put("Tests/Support/Values.h", "std::vector<int> values;\n")
        result = self.check("")
        self.assertEqual(result.returncode, 1)
        self.assertIn("Tests/Support/Values.h: nothing is included that declares vector", result.stderr)

    def test_a_precompiled_header_that_is_not_there(self):
        self.precompile("<vector> <vectors>")
        result = self.check("")
        self.assertEqual(result.returncode, 1)
        self.assertIn("vectors", result.stderr)

    def test_no_precompiled_headers_at_all(self):
        self.put("CMake/VelmoraPrecompiledHeaders.cmake", "set(other <vector>)\n")
        self.assertEqual(self.check("").returncode, 1)


if __name__ == "__main__":
    unittest.main()
