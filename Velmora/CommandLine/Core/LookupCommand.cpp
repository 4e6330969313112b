// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/LookupCommand.h"

#include <array>

#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/DictionarySource.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/JsonLines.h"
#include "Velmora/CommandLine/Core/ResultJson.h"
#include "Velmora/CommandLine/Core/ResultText.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "VelmoraCore/LookupEngine.h"
#include "VelmoraCore/ModelCoding.h"

namespace velmora {

namespace {

constexpr std::array<Arguments::Option, 4> options{
    {{"--offset", true}, {"--json", false}, {"--json-lines", false}, {"--dictionary", true}}};

int lookupLines(const Arguments& arguments, CommandStreams& streams) {
    if (arguments.has("--offset") || !arguments.texts().empty()) {
        throw UsageError("--json-lines reads texts and offsets from standard input");
    }
    answerJsonLines(LookupEngine(openDictionary(arguments.value("--dictionary"))), streams);
    return exitFound;
}

int lookupText(const Arguments& arguments, CommandStreams& streams) {
    const std::string& text = arguments.onlyText("TEXT");
    const long long offset = arguments.integer("--offset", 0);
    const LookupEngine engine(openDictionary(arguments.value("--dictionary")));
    const auto result = engine.lookup(text, offset);
    if (arguments.has("--json")) {
        streams.out << (result ? jsonText(resultJson(*result)) : "null") << '\n';
    } else if (result) {
        streams.out << resultText(*result, streams.style);
    } else {
        streams.err << "velmora: no word at character " << offset << '\n';
    }
    return result ? exitFound : exitNothing;
}

}  // namespace

int runLookupCommand(std::span<const std::string> arguments, CommandStreams& streams) {
    const Arguments parsed(arguments, options);
    return parsed.has("--json-lines") ? lookupLines(parsed, streams) : lookupText(parsed, streams);
}

}  // namespace velmora
