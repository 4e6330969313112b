// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/RecognizeCommand.h"

#include <QFile>
#include <array>
#include <cstdio>
#include <optional>
#include <utility>

#include "Velmora/CommandLine/Application/Annotation.h"
#include "Velmora/CommandLine/Application/ExtractionReport.h"
#include "Velmora/CommandLine/Application/PictureDesktop.h"
#include "Velmora/CommandLine/Application/PictureFile.h"
#include "Velmora/CommandLine/Application/PointArgument.h"
#include "Velmora/CommandLine/Application/ProbeJson.h"
#include "Velmora/CommandLine/Application/ProbeText.h"
#include "Velmora/CommandLine/Application/Recognition.h"
#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/DictionarySource.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/ResultJson.h"
#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"
#include "VelmoraCore/LookupEngine.h"
#include "VelmoraCore/ModelCoding.h"

namespace velmora {

namespace {

constexpr std::array<Arguments::Option, 5> options{{{"--at", true},
                                                    {"--json", false},
                                                    {"--explain", false},
                                                    {"--annotate", true},
                                                    {"--dictionary", true}}};

Recognition wholePicture(const Image& picture, const RecognizeServices& services,
                         std::ostream& err) {
    const Size size{static_cast<double>(picture.width()), static_cast<double>(picture.height())};
    Recognition result{{{0, 0, size.width, size.height}, size, 1, 1}, {}, {}, {}, {}, {}};
    const int candidateLimit = ExtractorConfiguration().ocrCandidateLimit;
    if (auto lines = services.textRecognizer->recognize(picture, std::nullopt, candidateLimit)) {
        result.lines = std::move(*lines);
    } else {
        const RecognitionStatus status = services.textRecognizer->status();
        const bool isReady = status.stage == RecognitionStatus::Stage::ready;
        err << "velmora: text recognition gives no answer"
            << (isReady ? "" : ": " + status.description) << '\n';
    }
    return result;
}

Recognition aroundPoint(const Image& picture, Point point, const RecognizeServices& services,
                        const LookupEngine& engine, std::ostream* explain) {
    const PictureDesktop desktop(picture);
    const auto extractor = AccessibilityTextExtractor::create(
        {desktop.accessibility(), desktop.screenCapture(), services.textRecognizer,
         services.textRectangleDetector, desktop.screens(), services.clock, nullptr, nullptr});
    ExtractionReport report(explain);
    const double height = picture.height();
    Recognition result;
    result.probe = extractor->extract({point.x, height - point.y}, {}, &report);
    result.path = report.path();
    if (report.region()) {
        result.geometry = *report.region();
        result.lines = report.region()->lines;
    }
    if (result.probe) {
        if (const auto& anchor = result.probe->anchorRect) {
            result.anchor = Rect{anchor->x, height - anchor->maxY(), anchor->width, anchor->height};
        }
        result.match = engine.lookup(result.probe->text, result.probe->hoveredCharacterOffset);
    }
    return result;
}

nlohmann::ordered_json recognitionJson(const Recognition& recognition) {
    nlohmann::ordered_json json = {{"lines", linesJson(recognition.lines, recognition.geometry)},
                                   {"probe", nullptr},
                                   {"match", nullptr}};
    if (recognition.probe && recognition.path) {
        json["probe"] = probeJson(*recognition.probe, recognition.anchor, *recognition.path);
    }
    if (recognition.match) {
        json["match"] = resultJson(*recognition.match);
    }
    return json;
}

void printLines(const Recognition& recognition, CommandStreams& streams) {
    for (const TextObservation& line : recognition.lines) {
        bool first = true;
        for (const auto& reading : line.candidates) {
            std::array<char, 16> confidence{};
            std::snprintf(confidence.data(), confidence.size(), "%.2f",
                          static_cast<double>(reading->confidence()));
            const std::string text = printable(reading->string());
            streams.out << streams.style.quiet(confidence.data()) << (first ? "  " : "    ")
                        << (first ? text : streams.style.quiet(text)) << '\n';
            first = false;
        }
    }
}

void saveAnnotated(const QImage& picture, const Recognition& recognition, const std::string& path) {
    if (!annotated(picture, recognition)
             .save(QFile::decodeName(QByteArray::fromStdString(path)), "PNG")) {
        throw UsageError(printable(path) + ": cannot be written");
    }
}

}  // namespace

std::string_view recognizeHelp() {
    return "usage: velmora recognize [--at X,Y] [--json] [--explain] [--annotate OUT.png]\n"
           "                         [--dictionary FILE] IMAGE\n"
           "\n"
           "Reads the text in a picture.\n"
           "\n"
           "  --at X,Y           let the picture stand for the screen and read what is at this\n"
           "                     pixel\n"
           "  --json             print lines, probe and match as JSON\n"
           "  --explain          list every attempt at that pixel on standard error\n"
           "  --annotate OUT.png draw boxes, cells and confidences over the picture\n"
           "  --dictionary FILE  look up in this word list\n";
}

int runRecognizeCommand(std::span<const std::string> arguments,
                        const std::function<RecognizeServices()>& makeServices,
                        CommandStreams& streams) {
    const Arguments parsed(arguments, options);
    if (parsed.texts().size() != 1) {
        throw UsageError("recognize takes one picture file");
    }
    const auto at = parsed.value("--at");
    const auto point = at ? std::optional(pointArgument(*at)) : std::nullopt;
    const QImage picture = readPicture(parsed.texts().front());
    const auto dictionary = parsed.value("--dictionary");
    const LookupEngine engine(at || dictionary ? openDictionary(dictionary)
                                               : std::shared_ptr<const DictionaryStore>());
    const RecognizeServices services = makeServices();
    std::ostream* const explain = parsed.has("--explain") ? &streams.err : nullptr;
    const Recognition recognition =
        point ? aroundPoint(imageOf(picture), *point, services, engine, explain)
              : wholePicture(imageOf(picture), services, streams.err);
    if (const auto path = parsed.value("--annotate")) {
        saveAnnotated(picture, recognition, *path);
    }
    if (parsed.has("--json")) {
        streams.out << jsonText(recognitionJson(recognition)) << '\n';
    } else {
        printLines(recognition, streams);
        if (recognition.probe && recognition.path) {
            streams.out << '\n'
                        << probeText(*recognition.probe, recognition.anchor, *recognition.path,
                                     engine, streams.style);
        }
    }
    const bool found = point ? recognition.match.has_value() : !recognition.lines.empty();
    return found ? exitFound : exitNothing;
}

}  // namespace velmora
