// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ProbeCommand.h"

#include <array>
#include <future>
#include <optional>

#include "Velmora/CommandLine/Application/ExtractionReport.h"
#include "Velmora/CommandLine/Application/PointArgument.h"
#include "Velmora/CommandLine/Application/ProbeJson.h"
#include "Velmora/CommandLine/Application/ProbeRecording.h"
#include "Velmora/CommandLine/Application/ProbeText.h"
#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/DictionarySource.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"
#include "VelmoraCore/LookupEngine.h"
#include "VelmoraCore/ModelCoding.h"

namespace velmora {

namespace {

constexpr std::array<Arguments::Option, 5> options{{{"--at", true},
                                                    {"--json", false},
                                                    {"--explain", false},
                                                    {"--record", true},
                                                    {"--dictionary", true}}};

std::optional<TextProbe> extractOnQueue(const ExtractionServices& services, Point screenPoint,
                                        ExtractionReport& report) {
    const auto extractor = AccessibilityTextExtractor::create(services);
    std::promise<std::optional<TextProbe>> promise;
    auto answer = promise.get_future();
    services.queue->async([&] { promise.set_value(extractor->extract(screenPoint, {}, &report)); });
    return answer.get();
}

void sayNothingReadable(const std::string& place, bool json, bool accessibilityGranted,
                        CommandStreams& streams) {
    if (json) {
        streams.out << "null\n";
    }
    if (!accessibilityGranted) {
        streams.err << "velmora: accessibility is off or its bus cannot be reached; velmora doctor "
                       "tells what to do\n";
    } else if (!json) {
        streams.err << "velmora: nothing readable at " << place << '\n';
    }
}

}  // namespace

std::string_view probeHelp() {
    return "usage: velmora probe --at X,Y [--json] [--explain] [--record DIR] [--dictionary FILE]\n"
           "\n"
           "Tells what would be read at a point of the screen now. X and Y are pixels from the\n"
           "top left corner.\n"
           "\n"
           "  --at X,Y           the point\n"
           "  --json             print the answer as JSON: text, hoveredCharacterOffset, source,\n"
           "                     anchorRect, via; null where nothing is read\n"
           "  --explain          list every attempt on standard error: what it found or why it\n"
           "                     gave up, and how long it took\n"
           "  --record DIR       keep what was seen, texts and pictures included, in this folder\n"
           "  --dictionary FILE  look up in this word list\n";
}

int runProbeCommand(std::span<const std::string> arguments,
                    const std::function<ProbeServices()>& makeServices, CommandStreams& streams) {
    const Arguments parsed(arguments, options);
    const auto at = parsed.value("--at");
    if (!at || !parsed.texts().empty()) {
        throw UsageError("probe takes --at X,Y and no text");
    }
    const Point nativePoint = pointArgument(*at);
    const auto dictionary = parsed.value("--dictionary");
    const bool json = parsed.has("--json");
    std::shared_ptr<const DictionaryStore> store;
    const auto recordingFolder = parsed.value("--record");
    if (dictionary || !json || recordingFolder) {
        store = openDictionary(dictionary);
    }
    ProbeServices services = makeServices();
    const ScreenGeometry geometry = services.screenGeometry->current();
    std::optional<ProbeRecording> recording;
    if (recordingFolder) {
        recording.emplace(services.extraction, nativePoint, geometry);
    }
    ExtractionReport report(parsed.has("--explain") ? &streams.err : nullptr);
    const auto probe =
        extractOnQueue(services.extraction, geometry.screenFromNative(nativePoint), report);
    if (recording) {
        recording->save(*recordingFolder, probe, LookupEngine(store));
    }
    if (!probe || !report.path()) {
        sayNothingReadable(*at, json, services.accessibilityGranted, streams);
        return exitNothing;
    }
    const auto anchor = probe->anchorRect
                            ? std::optional(geometry.nativeFromScreen(*probe->anchorRect))
                            : std::nullopt;
    if (json) {
        streams.out << jsonText(probeJson(*probe, anchor, *report.path())) << '\n';
    } else {
        streams.out << probeText(*probe, anchor, *report.path(), LookupEngine(store),
                                 streams.style);
    }
    return exitFound;
}

}  // namespace velmora
