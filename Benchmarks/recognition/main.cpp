// SPDX-License-Identifier: MIT
// benchmark_recognition CORPUS CEDICT [--plain] [--failures] [--uncached] [--soak] [--characters]:
// hovers over every point of a drawn corpus, looks the word up and prints one table; with --plain
// what Tesseract by itself makes of the same hovers stands beside it.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Benchmarks/recognition/CharacterDump.h"
#include "Benchmarks/recognition/HoverStage.h"
#include "Benchmarks/recognition/PlainTesseract.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"
#include "Velmora/Platform/Recognition/DictionaryWords.h"
#include "VelmoraCore/BundledDictionary.h"

namespace {

using namespace velmora;

struct Row {
    std::vector<double> milliseconds;
    std::vector<double> acceptedMilliseconds;
    std::vector<double> acceptedProcessor;
    std::vector<double> processor;
    int right = 0;
    int wrong = 0;
    int none = 0;
    int accepted = 0;
    int acceptedRight = 0;

    int count() const { return right + wrong + none; }

    void add(const HoverOutcome& outcome) {
        right += outcome.right ? 1 : 0;
        wrong += outcome.wrong ? 1 : 0;
        none += !outcome.right && !outcome.wrong ? 1 : 0;
        accepted += outcome.accepted ? 1 : 0;
        acceptedRight += outcome.accepted && outcome.right ? 1 : 0;
        milliseconds.push_back(outcome.milliseconds);
        processor.push_back(outcome.processorMilliseconds);
        if (outcome.accepted) {
            acceptedProcessor.push_back(outcome.processorMilliseconds);
            acceptedMilliseconds.push_back(outcome.milliseconds);
        }
    }
};

/// What this program and Tesseract by itself made of the same hovers.
struct Comparison {
    Row ours;
    Row plain;
};

double quantile(std::vector<double> values, double share) {
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const auto at = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1));
    return values[at];
}

double share(int part, int whole) {
    return whole > 0 ? 100.0 * part / whole : 0;
}

void printPlain(const Row& row) {
    if (row.count() > 0) {
        std::printf(" | %6.1f%% %6.1f%% %8.1f%% %9.2f%% %6.0fms %6.0fms",
                    share(row.right, row.count()), share(row.wrong, row.count()),
                    share(row.accepted, row.count()), share(row.acceptedRight, row.accepted),
                    quantile(row.processor, 0.5), quantile(row.processor, 0.95));
    }
}

/// Times are those of hovers whose first capture was accepted, but for rows without any and for the
/// last column. `besidePlain` adds what Tesseract by itself comes to.
void printTable(const std::map<std::string, Comparison>& rows, bool besidePlain) {
    std::printf("%-26s %6s %7s %7s %7s %9s %10s %8s %8s %8s %8s %8s", "", "hovers", "right",
                "wrong", "none", "accepted", "precision", "median", "p95", "cpu", "cpu p95",
                "all p95");
    if (besidePlain) {
        std::printf(" | %7s %7s %9s %10s %8s %8s", "right", "wrong", "accepted", "precision", "cpu",
                    "cpu p95");
    }
    std::printf("%s\n", besidePlain ? "  (Tesseract by itself)" : "");
    for (const auto& [name, comparison] : rows) {
        const Row& row = comparison.ours;
        const auto& times = row.accepted > 0 ? row.acceptedMilliseconds : row.milliseconds;
        const auto& processor = row.accepted > 0 ? row.acceptedProcessor : row.processor;
        std::printf(
            "%-26s %6.0f %6.1f%% %6.1f%% %6.1f%% %8.1f%% %9.2f%% %6.0fms %6.0fms %6.0fms %6.0fms "
            "%6.0fms",
            name.c_str(), static_cast<double>(row.count()), share(row.right, row.count()),
            share(row.wrong, row.count()), share(row.none, row.count()),
            share(row.accepted, row.count()), share(row.acceptedRight, row.accepted),
            quantile(times, 0.5), quantile(times, 0.95), quantile(processor, 0.5),
            quantile(processor, 0.95), quantile(row.processor, 0.95));
        printPlain(comparison.plain);
        std::printf("\n");
    }
}

/// Resident kilobytes of a process.
long residentKilobytes(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmRSS:", 0) == 0) {
            return std::atol(line.c_str() + 6);
        }
    }
    return 0;
}

/// Recognises two thousand times; memory must not grow after the first few hundred.
void soak(TesseractRecognizer& recognizer, const std::vector<CorpusScreen>& screens) {
    constexpr int rounds = 2000;
    constexpr int step = 250;
    std::vector<std::pair<Image, Point>> captures;
    for (std::size_t i = 0; i < std::min<std::size_t>(screens.size(), 20); ++i) {
        for (const CorpusHover& hover : screens[i].hovers) {
            const int left = std::max(0, hover.x - 260);
            const int top = std::max(0, hover.y - 80);
            captures.emplace_back(
                readPicture(screens[i].imagePath).cropped(left, top, 520, 160),
                Point{static_cast<double>(hover.x - left), static_cast<double>(hover.y - top)});
        }
    }
    std::printf("%12s %16s %16s\n", "recognitions", "program kB", "worker kB");
    for (int round = 0; round <= rounds; ++round) {
        const auto& [image, point] = captures[static_cast<std::size_t>(round) % captures.size()];
        recognizer.recognize(image, point, 3);
        if (round % step == 0) {
            std::printf("%12d %16ld %16ld\n", round, residentKilobytes(::getpid()),
                        residentKilobytes(recognizer.workerProcessId()));
        }
    }
}

/// The capture that the answer came from.
std::string captureName(const HoverOutcome& outcome) {
    const auto side = [](double length) { return std::to_string(static_cast<int>(length)); };
    return outcome.capture.width > 0
               ? "capture " + side(outcome.capture.width) + "x" + side(outcome.capture.height)
               : "capture none";
}

/// Hovers two characters beside a point and then, at once, over the point itself.
HoverOutcome hoverFromCache(HoverStage& stage, const CorpusScreen& screen,
                            const CorpusHover& hover) {
    CorpusHover beside = hover;
    beside.x += hover.offset >= 2 ? -2 * screen.size : 2 * screen.size;
    stage.hover(beside);
    return stage.hover(hover);
}

void printFailure(const CorpusScreen& screen, const CorpusHover& hover,
                  const HoverOutcome& outcome) {
    std::printf("%s %d,%d %s%d %s: \"%s\" for \"%s\"%s in %s\n", screen.imagePath.c_str(), hover.x,
                hover.y, screen.kind.c_str(), screen.size, screen.font.c_str(),
                outcome.shown.c_str(), outcome.expected.c_str(),
                outcome.accepted ? " ACCEPTED" : "", hover.line.c_str());
}

bool has(int count, char** arguments, const char* option) {
    return std::any_of(arguments, arguments + count,
                       [option](const char* text) { return std::strcmp(text, option) == 0; });
}

}  // namespace

int main(int count, char** arguments) {
    // The comparison runs Tesseract in this process, whose OpenMP library has read its limit
    // already.
    const char* limit = std::getenv("OMP_THREAD_LIMIT");
    if (limit == nullptr || std::strcmp(limit, "1") != 0) {
        ::setenv("OMP_THREAD_LIMIT", "1", 1);
        ::execv("/proc/self/exe", arguments);
    }
    if (count < 3) {
        std::fprintf(
            stderr,
            "benchmark_recognition CORPUS CEDICT [--plain] [--failures] [--uncached] [--soak] "
            "[--characters]\n");
        return 2;
    }
    const std::vector<CorpusScreen> screens = readCorpus(arguments[1]);
    const auto dictionary = BundledDictionary::load(arguments[2]).store;
    if (screens.empty()) {
        std::fprintf(stderr, "%s holds no corpus\n", arguments[1]);
        return 2;
    }
    if (has(count, arguments, "--characters")) {
        return dumpCharacters(screens, *wordPatternsOf(*dictionary)) ? 0 : 2;
    }
    const bool failures = has(count, arguments, "--failures");
    const bool alsoCached = !has(count, arguments, "--uncached");
    const auto recognizer = std::make_shared<TesseractRecognizer>(
        TesseractRecognizer::Options{{}, {}, std::chrono::milliseconds(10000)});
    recognizer->setWords(wordPatternsOf(*dictionary));
    recognizer->start();
    if (!recognizer->waitUntilReady(std::chrono::seconds(60))) {
        std::fprintf(stderr, "%s\n", recognizer->state().description().c_str());
        return 2;
    }
    if (!recognizer->waitForGlyphs(std::chrono::seconds(120))) {
        std::fprintf(stderr, "No forms of characters: going on without.\n");
    }
    const pid_t worker = recognizer->workerProcessId();
    if (has(count, arguments, "--soak")) {
        soak(*recognizer, screens);
        return 0;
    }
    HoverStage stage(recognizer, dictionary, HoverStage::Mode::anew);
    HoverStage cached(recognizer, dictionary, HoverStage::Mode::cached);
    stage.setWorker(worker);
    cached.setWorker(worker);
    const auto plain =
        has(count, arguments, "--plain") ? std::make_shared<PlainTesseract>() : nullptr;
    HoverStage plainStage(plain, dictionary, HoverStage::Mode::firstCaptureOnly);
    std::map<std::string, Comparison> rows;
    for (const CorpusScreen& screen : screens) {
        const Image picture = readPicture(screen.imagePath);
        stage.show(picture);
        plainStage.show(picture);
        if (plain) {
            plain->setTraditional(screen.script == "traditional");
        }
        for (const CorpusHover& hover : screen.hovers) {
            const HoverOutcome outcome = stage.hover(hover);
            const auto plainOutcome = plain ? std::optional(plainStage.hover(hover)) : std::nullopt;
            const std::string size = "size " + std::to_string(screen.size);
            for (const std::string& name :
                 {std::string("all"), screen.kind, screen.kind + ", " + screen.script,
                  "font " + screen.font, (screen.kind == "subtitle" ? "subtitle " : "") + size}) {
                rows[name].ours.add(outcome);
                if (plainOutcome) {
                    rows[name].plain.add(*plainOutcome);
                }
            }
            rows[captureName(outcome)].ours.add(outcome);
            if (failures && !outcome.right) {
                printFailure(screen, hover, outcome);
            }
            if (alsoCached) {
                cached.show(picture);
                const HoverOutcome again = hoverFromCache(cached, screen, hover);
                if (again.cached) {
                    rows["from the cache"].ours.add(again);
                }
            }
        }
    }
    printTable(rows, plain != nullptr);
    if (worker > 0) {
        const long atWork = residentKilobytes(worker);
        std::this_thread::sleep_for(std::chrono::seconds(1));
        std::printf("worker resident at work: %ld kB, at rest: %ld kB\n", atWork,
                    residentKilobytes(worker));
    }
    return 0;
}
