// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/AlignCommand.h"

#include <array>
#include <vector>

#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/ResultJson.h"
#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "VelmoraCore/ModelCoding.h"
#include "VelmoraCore/OCRTextCorrector.h"

namespace velmora {

namespace {

constexpr std::array<Arguments::Option, 2> options{{{"--json", false}, {"--reference", true}}};

}  // namespace

int runAlignCommand(std::span<const std::string> arguments, CommandStreams& streams) {
    const Arguments parsed(arguments, options);
    const std::string& line = parsed.onlyText("LINE");
    const std::vector<std::string> references = parsed.values("--reference");
    if (references.empty()) {
        throw UsageError("--reference is missing");
    }
    for (const std::string& reference : references) {
        requireUtf8(reference, "a reference");
    }
    const auto alignment = OCRTextCorrector::align(line, references);
    if (parsed.has("--json")) {
        streams.out << (alignment ? jsonText(alignmentJson(*alignment)) : "null") << '\n';
    } else if (alignment) {
        const MatchedTextRange& range = alignment->characterRange;
        const std::string place = "reference " + std::to_string(alignment->referenceIndex) +
                                  ", characters " + std::to_string(range.start) + " to " +
                                  std::to_string(range.end);
        streams.out << printable(alignment->text) << (streams.style.width > 0 ? "  " : "\t")
                    << streams.style.quiet(place) << '\n';
    } else {
        streams.err << "velmora: no reference holds a text close to the line\n";
    }
    return alignment ? exitFound : exitNothing;
}

}  // namespace velmora
