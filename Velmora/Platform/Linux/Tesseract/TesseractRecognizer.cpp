// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"

#include <algorithm>
#include <cmath>
#include <thread>
#include <utility>

#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"
#include "Velmora/Platform/Recognition/ForeignLetters.h"
#include "Velmora/Platform/Recognition/LineFinder.h"
#include "Velmora/Platform/Recognition/LineRecognizer.h"
#include "Velmora/Platform/Recognition/OutlinedText.h"
#include "Velmora/Platform/Recognition/ReadText.h"
#include "Velmora/Platform/Recognition/RememberingLineReader.h"
#include "VelmoraCore/CharacterText.h"

namespace velmora {

namespace {

using Clock = std::chrono::steady_clock;

// Around the point of interest only this much is looked at: the longest lines that matter.
constexpr int reachAcross = 1400;
constexpr int reachDown = 150;

/// Lines farther away (pixels) cannot hold the character under the pointer.
constexpr double nearEnough = 20;
constexpr std::size_t mostNearLines = 2;

/// What is looked at to tell a plain surface from a picture, and where the line is drawn.
constexpr int surfaceAcross = 60;
constexpr int surfaceDown = 40;
constexpr double plainSurface = 0.55;
constexpr double bareSurface = 0.8;  ///< Above this there is no picture that needs an outline.
constexpr float convincing = 0.985F;
constexpr std::chrono::milliseconds glyphPoll{20};

// Bounds for reading everything in a picture.
constexpr std::chrono::milliseconds wholePictureLimit{4000};
constexpr int stripHeight = 512;
constexpr int stripOverlap = 100;
constexpr int greatestStripWidth = 4096;
constexpr std::size_t mostLines = 400;

double distanceTo(const PixelBox& box, Point point) {
    const double dx = std::max({0.0, box.left - point.x, point.x - box.right});
    const double dy = std::max({0.0, box.top - point.y, point.y - box.bottom});
    return dx + 2 * dy;
}

PixelBox areaAround(const Image& image, Point point) {
    const int x = static_cast<int>(std::clamp<double>(point.x, 0, image.width() - 1));
    const int y = static_cast<int>(std::clamp<double>(point.y, 0, image.height() - 1));
    return PixelBox{x - reachAcross, y - reachDown, x + reachAcross, y + reachDown}.clippedTo(
        image.width(), image.height());
}

bool hasChinese(const std::string& text) {
    const CharacterText characters(text);
    for (std::size_t i = 0; i < characters.count(); ++i) {
        if (isChinese(characters[i])) {
            return true;
        }
    }
    return false;
}

/// Of the readings with Chinese in them: strokes that were taken apart look like letters, which
/// are read with more confidence than a character.
float bestConfidence(const std::vector<TextObservation>& observations) {
    float best = 0;
    for (const TextObservation& observation : observations) {
        for (const auto& candidate : observation.candidates) {
            if (hasChinese(candidate->string())) {
                best = std::max(best, candidate->confidence());
            }
        }
    }
    return best;
}

}  // namespace

/// One picture being read: where the part that is looked at begins and what has been found.
struct TesseractRecognizer::Job {
    const Image& image;
    std::size_t candidateLimit;
    int left;
    int top;
    Clock::time_point deadline;
    std::vector<TextObservation> observations;
};

TesseractRecognizer::TesseractRecognizer(Options options)
    : process_(std::make_unique<RecognizerProcess>(
          RecognizerProcess::Options{.executable = std::move(options.workerExecutable),
                                     .dataFolder = std::move(options.dataFolder),
                                     .answerLimit = options.answerLimit,
                                     .glyphFolder = std::move(options.glyphFolder)})),
      reader_(std::make_unique<RememberingLineReader>(*process_)),
      lines_(std::make_unique<LineRecognizer>(*reader_, nullptr)) {}

TesseractRecognizer::~TesseractRecognizer() = default;

void TesseractRecognizer::start() {
    process_->start();
}

bool TesseractRecognizer::waitUntilReady(std::chrono::milliseconds limit) {
    return process_->waitUntilReady(limit);
}

bool TesseractRecognizer::waitForGlyphs(std::chrono::milliseconds limit) {
    const Clock::time_point deadline = Clock::now() + limit;
    const CellsToMatch nothing{GrayImage(1, 1), 1, {}};
    while (!process_->matchCells(nothing)) {
        if (Clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(glyphPoll);
    }
    return true;
}

RecognizerState TesseractRecognizer::state() const {
    return process_->state();
}

RecognitionStatus TesseractRecognizer::status() const {
    return state().status();
}

pid_t TesseractRecognizer::workerProcessId() const {
    return process_->processId();
}

void TesseractRecognizer::setWords(std::shared_ptr<const WordPatterns> words) {
    process_->setGlyphs(words ? withForeignLetters(words->characters()) : std::vector<char32_t>());
    const std::lock_guard lock(wordsMutex_);
    words_ = std::move(words);
}

std::optional<std::vector<TextObservation>> TesseractRecognizer::recognize(
    const Image& image, std::optional<Point> pointOfInterest, int candidateLimit) {
    if (image.isEmpty() || candidateLimit < 1 || !state().canRead()) {
        return std::nullopt;
    }
    std::shared_ptr<const WordPatterns> words;
    {
        const std::lock_guard lock(wordsMutex_);
        words = words_;
    }
    lines_->setWords(words.get());
    Job job{image, static_cast<std::size_t>(candidateLimit), 0, 0, Clock::time_point::max(), {}};
    if (pointOfInterest && std::isfinite(pointOfInterest->x) && std::isfinite(pointOfInterest->y)) {
        readNear(job, *pointOfInterest);
    } else {
        readAll(job);
    }
    lines_->setWords(nullptr);
    if (!state().canRead()) {
        // The worker went in the middle; what was read so far is not what it would have said.
        return std::nullopt;
    }
    return std::move(job.observations);
}

std::optional<std::vector<TextObservation>> TesseractRecognizer::verify(
    const Image& image, const std::vector<TextObservation>& /*lines*/, Point pointOfInterest,
    int candidateLimit) {
    return recognize(image, pointOfInterest, candidateLimit);
}

/// On a plain surface the lines are read as they stand; on a picture they may be outlined. What is
/// less likely is tried where the other does not convince, before either is read more than once.
void TesseractRecognizer::readNear(Job& job, Point point) {
    const PixelBox area = areaAround(job.image, point);
    job.left = area.left;
    job.top = area.top;
    const Point inside{point.x - area.left, point.y - area.top};
    const GrayImage gray = brightness(job.image, area);
    const auto x = static_cast<int>(inside.x);
    const auto y = static_cast<int>(inside.y);
    const PixelBox around{x - surfaceAcross, y - surfaceDown, x + surfaceAcross, y + surfaceDown};
    const double flatness = backgroundFlatness(gray, around);
    const bool plainFirst =
        flatness >= plainSurface || flatnessOfTwoSurfaces(gray, around) >= bareSurface;
    const bool isPicture = flatness < bareSurface;
    std::optional<FoundLines> plain;
    std::optional<FoundLines> outlined;
    bool hasAttempted = false;  // What the first one saw counts even without any Chinese in it.
    const auto attempt = [&](bool asPlain, LineEffort effort) {
        std::optional<FoundLines>& lines = asPlain ? plain : outlined;
        if (!lines) {
            lines = findLines(asPlain ? gray : outlinedTextCore(job.image, area), inside);
        }
        std::vector<TextObservation> before = std::exchange(job.observations, {});
        readLines(job, *lines, inside, effort);
        if (std::exchange(hasAttempted, true) &&
            bestConfidence(before) >= bestConfidence(job.observations)) {
            job.observations = std::move(before);
        }
        return bestConfidence(job.observations) >= convincing;
    };
    if (!isPicture) {
        attempt(plainFirst, LineEffort::full);
        return;
    }
    for (const LineEffort effort : {LineEffort::once, LineEffort::full}) {
        if (attempt(plainFirst, effort) || attempt(!plainFirst, effort)) {
            return;
        }
    }
}

/// The whole picture in overlapping strips; a line belongs to the strip that holds its middle.
void TesseractRecognizer::readAll(Job& job) {
    job.deadline = Clock::now() + wholePictureLimit;
    const int width = std::min(job.image.width(), greatestStripWidth);
    for (int top = 0; top < job.image.height() && Clock::now() < job.deadline &&
                      job.observations.size() < mostLines;
         top += stripHeight) {
        const PixelBox strip =
            PixelBox{0, top - stripOverlap, width, top + stripHeight + stripOverlap}.clippedTo(
                job.image.width(), job.image.height());
        job.left = strip.left;
        job.top = strip.top;
        FoundLines found = findLines(brightness(job.image, strip));
        std::erase_if(found.lines, [&](const TextLine& line) {
            const int middle = strip.top + (line.box.top + line.box.bottom) / 2;
            return middle < top || middle >= top + stripHeight;
        });
        readLines(job, found, std::nullopt, LineEffort::full);
    }
}

void TesseractRecognizer::readLines(Job& job, const FoundLines& found, std::optional<Point> point,
                                    LineEffort effort) {
    std::vector<TextLine> lines = found.lines;
    if (point) {
        std::erase_if(
            lines, [&](const TextLine& line) { return distanceTo(line.box, *point) > nearEnough; });
        std::stable_sort(lines.begin(), lines.end(), [&](const TextLine& a, const TextLine& b) {
            return distanceTo(a.box, *point) < distanceTo(b.box, *point);
        });
        lines.resize(std::min(lines.size(), mostNearLines));
    }
    for (const TextLine& line : lines) {
        if (Clock::now() >= job.deadline || job.observations.size() >= mostLines) {
            return;
        }
        const ReadLine read =
            lines_->recognize(found, line, point ? std::optional(point->x) : std::nullopt, effort);
        const PixelBox box = read.box.movedBy(job.left, job.top);
        TextObservation observation;
        observation.boundingBox = normalizedBox(box, job.image.width(), job.image.height());
        for (const LineCandidate& candidate : read.candidates) {
            if (observation.candidates.size() >= job.candidateLimit) {
                break;
            }
            PlacedLine characters = candidate.characters;
            for (PlacedCharacter& character : characters) {
                character.cell.left += job.left;
                character.cell.right += job.left;
            }
            observation.candidates.push_back(std::make_shared<ReadText>(
                characters, candidate.confidence, box, job.image.width(), job.image.height()));
        }
        if (!observation.candidates.empty()) {
            job.observations.push_back(std::move(observation));
        }
    }
}

}  // namespace velmora
