# SPDX-License-Identifier: MIT
"""Does every source of the tests include what it uses of the libraries?

Where the libraries' headers are precompiled (CMake/VelmoraPrecompiledHeaders.cmake) and where some
sources are compiled as one (CMake/VelmoraJoinedTests.cmake) a missing include goes unnoticed. This
reads the headers that are precompiled for what they declare, and each source for what it names of
that; one of the headers that declare it must be among those that the source reaches by its own
includes. Declarations are recognised by how these libraries are written; what is declared in several
headers is content with any of them.

Usage: check_includes.py ROOT FOLDER_OF_COMPILE_COMMANDS
"""

from __future__ import annotations

import json
import re
import shlex
import subprocess
import sys
from pathlib import Path

INCLUDE = re.compile(r'^[ \t]*#[ \t]*(?:include|include_next)[ \t]*([<"])([^>"\n]+)[>"]', re.MULTILINE)
COMMENT_OR_TEXT = re.compile(
    r'R"(\w*)\(.*?\)\1"|//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)

# What a header declares: types with a body, aliases, functions, variables, macros. A type that is
# announced only does not count.
DECLARATIONS = (
    re.compile(r"^[^\n;(]*\b(?:class|struct|union|enum(?:[ \t]+class)?|concept|namespace)[ \t]+(?:(?:\w+_EXPORT|GTEST_API_)[ \t]+|"
               r"_GLIBCXX\w*(?:\([^)\n]*\))?[ \t]+|\[\[\w+\]\][ \t]+)*(\w+)\b(?![^\n{]*;[ \t]*$)", re.MULTILINE),
    re.compile(r"\busing[ \t]+(\w+)[ \t]*(?:\[\[[^\]]*\]\][ \t]*)?="),
    re.compile(r"\busing[ \t]+(?:::|\w+::)+(\w+);"),
    re.compile(r"\btypedef\b[^;{}]*?\b(\w+)[ \t]*;"),
    re.compile(r"^(?:[ \t]*(?:extern|inline|constexpr|static|template|Q_\w+_EXPORT|_GLIBCXX\w*)\b[^\n;=]*?)\b(\w+)[ \t]*\(",
               re.MULTILINE),
    re.compile(r"\bconstexpr\b[^\n;(]*?\b(\w+)[ \t]*(?:=|\{|;)"),
    re.compile(r"^[ \t]*extern\b[^\n;(]*?\b(\w+);", re.MULTILINE),
    re.compile(r"^[ \t]*#[ \t]*define[ \t]+(\w+)", re.MULTILINE),
    re.compile(r"^GTEST_API_\b[^\n(;]*?\b(\w+)\(", re.MULTILINE),
    re.compile(r"^  (?:bool|void|path|uintmax_t|file_status|file_time_type|space_info) (\w+)\(", re.MULTILINE),
)

# The standard library writes a function's name in a line of its own, a member's further to the right.
FUNCTION = re.compile(r"^ {0,4}(\w+)[ ]?\(", re.MULTILINE)

# Names of templates that are announced in one header and complete in another, and of functions that
# stand as far to the right as members do.
COMPLETE_IN = {
    "string": "bits/basic_string.h", "wstring": "bits/basic_string.h", "u16string": "bits/basic_string.h",
    "u32string": "bits/basic_string.h", "ios": "bits/basic_ios.h", "istream": "istream", "ostream": "ostream",
    "iostream": "istream", "stringstream": "sstream", "istringstream": "sstream", "ostringstream": "sstream",
    "stringbuf": "sstream", "fstream": "fstream", "ifstream": "fstream", "ofstream": "fstream",
    "filebuf": "fstream", "streambuf": "streambuf", "istreambuf_iterator": "bits/streambuf_iterator.h",
    "ostreambuf_iterator": "bits/streambuf_iterator.h", "duration_cast": "bits/chrono.h",
    "sleep_for": "bits/this_thread_sleep.h", "sleep_until": "bits/this_thread_sleep.h",
}

# What a source names: something of the standard library, of the test framework, of the toolkit, a
# macro, a function of the system.
USES = (
    re.compile(r"\bstd::ranges::(\w+)"),
    re.compile(r"\bstd::(?:chrono::|filesystem::|views::|numbers::|this_thread::|placeholders::)?(\w+)"),
    re.compile(r"\b(?:testing|nlohmann)::(\w+)"),
    re.compile(r"\b(Q[A-Z]\w+|q[A-Z]\w+)\b"),
    re.compile(r"\b([A-Z][A-Z0-9]*_?[A-Z0-9_]{2,})\b"),
    re.compile(r"(?<![\w>])::([a-z]\w{3,})[ ]?\("),
    re.compile(r"(?<![\w.:>])([a-z]\w{3,})[ ]?\("),
)
RANGES = 0
STANDARD = (0, 1)
QUALIFIED = (0, 1, 2, len(USES) - 2)  # No name of our own.
SYSTEM_FUNCTIONS = (len(USES) - 2, len(USES) - 1)
NESTED = {"chrono", "filesystem", "ranges", "views", "numbers", "this_thread", "placeholders"}


class Headers:
    """Which header includes which, read once each."""

    def __init__(self, folders: list[Path]) -> None:
        self.folders = folders
        self.found: dict[tuple[str, Path | None], Path | None] = {}
        self.texts: dict[Path, str] = {}
        self.included: dict[Path, list[Path]] = {}

    def text(self, path: Path) -> str:
        if path not in self.texts:
            self.texts[path] = path.read_text(encoding="utf-8", errors="replace")
        return self.texts[path]

    def find(self, name: str, beside: Path | None) -> Path | None:
        key = (name, beside)
        if key not in self.found:
            places = ([beside] if beside else []) + self.folders
            self.found[key] = next((p for p in (place / name for place in places) if p.is_file()), None)
        return self.found[key]

    def direct(self, path: Path) -> list[Path]:
        if path not in self.included:
            names = INCLUDE.findall(self.text(path))
            found = (self.find(name, path.parent if mark == '"' else None) for mark, name in names)
            # Other ways to build the standard library.
            self.included[path] = [each for each in found if each and each.parent.name not in ("debug", "parallel")]
        return self.included[path]

    def reach(self, path: Path) -> set[Path]:
        seen: set[Path] = set()
        left = list(self.direct(path))
        while left:
            each = left.pop()
            if each not in seen:
                seen.add(each)
                left.extend(self.direct(each))
        return seen


def system_folders(database: Path) -> list[Path]:
    """Where the compiler looks, and where the toolkit and the other libraries are."""
    folders: dict[Path, None] = {}
    for entry in json.loads((database / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        folders.update({Path(after): None for word, after in zip(words, words[1:]) if word == "-isystem"})
    told = subprocess.run(["g++", "-std=c++20", "-xc++", "-E", "-v", "/dev/null"], capture_output=True, text=True,
                          check=True).stderr
    part = told.split("#include <...> search starts here:")[1].split("End of search list.")[0]
    folders.update({Path(line.strip()): None for line in part.strip().splitlines()})
    return list(folders)


def bare(text: str) -> str:
    """A source without its comments and its texts, which name nothing."""
    return COMMENT_OR_TEXT.sub(lambda m: "\n" * m.group(0).count("\n") or " ", text)


def declared_in(headers: Headers, precompiled: set[Path]) -> dict[str, set[Path]]:
    result: dict[str, set[Path]] = {}
    for path in precompiled:
        text = re.sub(r"/\*.*?\*/|//[^\n]*", " ", headers.text(path), flags=re.DOTALL)
        patterns = DECLARATIONS if path.name.endswith((".tcc", "fwd.h")) else (*DECLARATIONS, FUNCTION)
        for pattern in patterns:
            for name in pattern.findall(text):
                result.setdefault(name, set()).add(path)
    for name, header in COMPLETE_IN.items():
        result[name] = {path for path in precompiled if str(path).endswith("/" + header)}
    return result


def precompiled_headers(root: Path, headers: Headers) -> set[Path]:
    """What CMake has precompiled, and all that comes along with it."""
    listing = (root / "CMake/VelmoraPrecompiledHeaders.cmake").read_text()
    blocks = re.findall(r"set\((?:headers|toolkit|framework) ([^)]*)\)", listing)
    names = {name for block in blocks for name in re.findall(r"<([^>]+)>", block)}
    first = {name: headers.find(name, None) for name in names}
    missing = [name for name, path in first.items() if path is None]
    if missing or not names:
        sys.exit(f"check_includes: not found of what is precompiled: {', '.join(missing) or 'everything'}")
    paths = {path for path in first.values() if path}
    return paths.union(*(headers.reach(path) for path in paths))


class Check:
    def __init__(self, root: Path, database: Path) -> None:
        self.root = root
        self.headers = Headers([root, *system_folders(database)])
        precompiled = precompiled_headers(root, self.headers)
        self.declared = declared_in(self.headers, precompiled)
        extern = re.compile(r"\bextern\b[^;(]*?\b(\w+) \(")
        self.system = {name for path in precompiled for name in extern.findall(self.headers.text(path))}

    def problems(self, source: Path) -> list[str]:
        text = bare(self.headers.text(source))
        reach = self.headers.reach(source)
        result: list[str] = []
        for index, pattern in enumerate(USES):
            for name in sorted(set(pattern.findall(text)) & self.declared.keys()):
                if name in NESTED or (index in SYSTEM_FUNCTIONS and name not in self.system):
                    continue
                declared = self.declared[name]
                if index in STANDARD:  # What C calls the same is in no namespace.
                    declared = {path for path in declared if "/c++/" in str(path)}
                if index == RANGES:
                    declared = {path for path in declared if path.name.startswith("ranges")} or declared
                if not declared or not declared.isdisjoint(reach):
                    continue
                if index in QUALIFIED or not self.is_ours(name, source, reach):
                    where = ", ".join(sorted({path.name for path in declared})[:4])
                    result.append(f"{source.relative_to(self.root)}: nothing is included that declares {name} ({where})")
        return result

    def is_ours(self, name: str, source: Path, reach: set[Path]) -> bool:
        """Whether the project declares or announces something of this name itself."""
        prefix = f"{self.root}/"
        said = "\n".join(bare(self.headers.text(path)) for path in (source, *reach) if str(path).startswith(prefix))
        return re.search(rf"\b(?:class|struct|enum|define|namespace|using)\b[^\n;(]*\b{name}\b|"
                         rf"\b(?!return\b|else\b)\w+[&*>]? +{name}\(", said) is not None


def main() -> int:
    root = Path(sys.argv[1]).resolve()
    check = Check(root, Path(sys.argv[2]))
    sources = sorted(path for kind in ("*.cpp", "*.h") for path in (root / "Tests").rglob(kind))
    problems = [problem for source in sources for problem in check.problems(source)]
    print(*problems, sep="\n", end="\n" if problems else "", file=sys.stderr)
    print(f"{len(sources)} sources, {len(check.declared)} names of the libraries, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
