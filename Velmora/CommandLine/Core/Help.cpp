// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/Help.h"

namespace velmora {

namespace {

constexpr std::string_view general = R"(Velmora explains the Chinese word under the pointer.

usage: velmora                      run the application
       velmora COMMAND [OPTION…] [--] [ARGUMENT…]

Dictionary, no desktop needed:
  lookup TEXT        the word at a position of a text
  segment [TEXT]     a text word by word
  pinyin TEXT        numbered pinyin to marked pinyin
  align LINE         where a recognised line stands in reference texts

On a desktop:
  probe              what would be read at a point of the screen
  recognize IMAGE    the text in a picture
  doctor             what this system lacks, and how to mend it
  autostart          start with the desktop session: on, off, status

The running program:
  settings, onboarding, toggle, diagnostics, quit

velmora COMMAND --help tells more about one command; velmora --version names the version.
Exit status: 0 found or done, 1 nothing found, 2 wrong usage or unreadable input.
The word list is CC-CEDICT, published under CC BY-SA 4.0.
)";

constexpr std::string_view lookup =
    R"(usage: velmora lookup [--offset N] [--json] [--dictionary FILE] [--] TEXT
       velmora lookup --json-lines [--dictionary FILE]

Finds the longest word that covers character N of TEXT, counted from 0.

  --offset N         the character (0 where it is not given)
  --json             print one JSON object, or null where there is no word
  --json-lines       read one {"text": …, "offset": …} per line from standard input and answer
                     each with one line: an object, null, or {"error": …}
  --dictionary FILE  use FILE in the format of CC-CEDICT instead of the installed word list
)";

constexpr std::string_view segment =
    R"(usage: velmora segment [--json] [--dictionary FILE] [--] [TEXT]

Prints the words of TEXT, or of standard input where there is no TEXT, from left to right.

  --json             print a JSON array of the same objects as lookup
  --dictionary FILE  use FILE in the format of CC-CEDICT instead of the installed word list
)";

constexpr std::string_view pinyin = R"(usage: velmora pinyin [--json] [--] TEXT

Converts numbered pinyin ("xue2 xi2", "lu:4") to marked pinyin.

  --json             print the syllables with their tones
)";

constexpr std::string_view align =
    R"(usage: velmora align [--json] --reference TEXT [--reference TEXT …] [--] LINE

Finds where a recognised LINE stands in the reference texts, allowing for a few misread
characters, and prints the text that stands there.

  --reference TEXT   a text that the line may come from; may be given many times
  --json             print {"text", "referenceIndex", "characterRange"}, or null
)";

}  // namespace

std::string_view generalHelp() {
    return general;
}

std::optional<std::string_view> helpOf(std::string_view command) {
    if (command == "lookup") {
        return lookup;
    }
    if (command == "segment") {
        return segment;
    }
    if (command == "pinyin") {
        return pinyin;
    }
    if (command == "align") {
        return align;
    }
    return std::nullopt;
}

}  // namespace velmora
