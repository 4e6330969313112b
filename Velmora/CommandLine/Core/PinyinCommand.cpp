// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/PinyinCommand.h"

#include <array>

#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/ResultJson.h"
#include "Velmora/CommandLine/Core/ResultText.h"
#include "VelmoraCore/ModelCoding.h"
#include "VelmoraCore/PinyinConverter.h"

namespace velmora {

namespace {

constexpr std::array<Arguments::Option, 1> options{{{"--json", false}}};

}  // namespace

int runPinyinCommand(std::span<const std::string> arguments, CommandStreams& streams) {
    const Arguments parsed(arguments, options);
    const auto syllables = PinyinConverter::convertPhrase(parsed.onlyText("TEXT"));
    if (parsed.has("--json")) {
        streams.out << jsonText(syllablesJson(syllables)) << '\n';
    } else {
        streams.out << readingText(syllables, streams.style) << '\n';
    }
    return exitFound;
}

}  // namespace velmora
