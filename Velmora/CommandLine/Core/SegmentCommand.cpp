// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/SegmentCommand.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/DictionarySource.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/ResultJson.h"
#include "Velmora/CommandLine/Core/ResultText.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "VelmoraCore/CharacterText.h"
#include "VelmoraCore/LookupEngine.h"
#include "VelmoraCore/ModelCoding.h"

namespace velmora {

namespace {

constexpr std::array<Arguments::Option, 2> options{{{"--json", false}, {"--dictionary", true}}};

std::string readAll(std::istream& stream) {
    std::string text;
    std::array<char, 1 << 16> block{};
    while (stream) {
        stream.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
        if (text.size() > maximumSegmentInput) {
            throw UsageError("standard input is longer than 64 MiB");
        }
    }
    if (stream.bad()) {
        throw UsageError("standard input cannot be read");
    }
    return text;
}

std::string inputText(const Arguments& arguments, CommandStreams& streams) {
    if (!arguments.texts().empty()) {
        return arguments.onlyText("TEXT");
    }
    std::string text = readAll(streams.in);
    requireUtf8(text, "standard input");
    return text;
}

/// The lines of a text with their line ends. No word reaches across a line feed and no character
/// either (CR LF stays together), so that each line can be segmented on its own.
std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        if (end > maximumSegmentLine) {
            throw UsageError("a line of the text is longer than 1 MiB");
        }
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

/// The words of one line, their ranges counted from the beginning of the whole text.
std::vector<LookupResult> wordsOf(std::string_view line, long long charactersBefore,
                                  const LookupEngine& engine) {
    std::vector<LookupResult> words = engine.lookups(line);
    for (LookupResult& word : words) {
        word.range.start += charactersBefore;
        word.range.end += charactersBefore;
    }
    return words;
}

class Printer {
  public:
    Printer(CommandStreams& streams, bool json) : streams_(streams), json_(json) {
        if (json_) {
            streams_.out << '[';
        }
    }

    void print(std::span<const LookupResult> words) {
        if (!json_) {
            streams_.out << resultsText(words, streams_.style);
        }
        for (const LookupResult& word : words) {
            if (json_) {
                streams_.out << (found_ ? ",\n" : "") << jsonText(resultJson(word));
            }
            found_ = true;
        }
    }

    int finish() {
        if (json_) {
            streams_.out << "]\n";
        } else if (!found_) {
            streams_.err << "velmora: no word in the text\n";
        }
        return found_ ? exitFound : exitNothing;
    }

  private:
    CommandStreams& streams_;
    bool json_;
    bool found_ = false;
};

}  // namespace

int runSegmentCommand(std::span<const std::string> arguments, CommandStreams& streams) {
    const Arguments parsed(arguments, options);
    const std::string text = inputText(parsed, streams);
    const std::vector<std::string_view> lines = linesOf(text);
    const LookupEngine engine(openDictionary(parsed.value("--dictionary")));
    Printer printer(streams, parsed.has("--json"));
    long long charactersBefore = 0;
    for (const std::string_view line : lines) {
        printer.print(wordsOf(line, charactersBefore, engine));
        charactersBefore += static_cast<long long>(CharacterText(line).count());
    }
    return printer.finish();
}

}  // namespace velmora
