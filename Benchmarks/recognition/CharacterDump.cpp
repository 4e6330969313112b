// SPDX-License-Identifier: MIT
#include "Benchmarks/recognition/CharacterDump.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"
#include "Velmora/Platform/Recognition/CodePoint.h"
#include "Velmora/Platform/Recognition/ForeignLetters.h"
#include "Velmora/Platform/Recognition/LineRecognizer.h"
#include "Velmora/Platform/Recognition/OutlinedText.h"
#include "Velmora/Platform/Recognition/WordJudge.h"

namespace velmora {

namespace {

constexpr int captureWidth = 520;
constexpr int captureHeight = 160;
constexpr std::size_t before = 2;  ///< Characters around the hovered one that are printed.
constexpr std::size_t after = 3;

/// The true character whose ink stands where a cell is; null where there is none.
const CorpusCharacter* truthAt(const CorpusScreen& screen, double x, double y) {
    const CorpusCharacter* best = nullptr;
    double nearest = 1e9;
    for (const CorpusCharacter& character : screen.characters) {
        const double distance = std::hypot(character.x + character.width / 2 - x,
                                           character.y + character.height / 2 - y);
        if (distance < nearest && distance < screen.size * 0.5) {
            nearest = distance;
            best = &character;
        }
    }
    return best;
}

/// What the place may hold, each with what speaks for it.
void printOptions(const PlacedLine& line, std::size_t place, const WordJudge& words) {
    for (const CharacterOption& option : line[place].options) {
        std::printf("\t%s %.4f %.4f %.4f %.0f %zu", utf8Of(option.character).c_str(), option.exact,
                    option.shape, option.read, option.votes,
                    words.longestWord(line, place, option.character));
    }
    std::printf("\n");
}

void printLine(const CorpusScreen& screen, const ReadLine& read, const CorpusHover& hover, int left,
               int top, const WordJudge& words) {
    if (read.candidates.empty()) {
        return;
    }
    const PlacedLine& line = read.candidates.front().characters;
    const int at = characterAt(line, hover.x - left, screen.size);
    if (at < 0) {
        return;
    }
    const auto focus = static_cast<std::size_t>(at);
    for (std::size_t i = focus - std::min(focus, before); i < std::min(line.size(), focus + after);
         ++i) {
        const PlacedCharacter& character = line[i];
        const CorpusCharacter* truth = truthAt(screen, character.cell.middle() + left,
                                               (read.box.top + read.box.bottom) / 2.0 + top);
        if (!isHan(firstCodePoint(character.text)) || character.exact <= 0) {
            continue;
        }
        std::printf("@\t%s\t%d\t%s\t%s\t%.4f", screen.kind.c_str(), screen.size,
                    screen.font.c_str(), truth != nullptr ? truth->text.c_str() : "-",
                    character.fit);
        printOptions(line, i, words);
    }
}

}  // namespace

bool dumpCharacters(const std::vector<CorpusScreen>& screens, const WordPatterns& words) {
    RecognizerProcess process({{}, {}, std::chrono::milliseconds(10000)});
    process.setGlyphs(withForeignLetters(words.characters()));
    process.start();
    if (!process.waitUntilReady(std::chrono::seconds(60))) {
        return false;
    }
    while (!process.matchCells({GrayImage(1, 1), 1, {}})) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    LineRecognizer recognizer(process, &words);
    const WordJudge judge(&words);
    std::printf("@\tkind\tsize\tfont\ttruth\tfit\toption exact shape read votes word\t...\n");
    for (const CorpusScreen& screen : screens) {
        const Image picture = readPicture(screen.imagePath);
        for (const CorpusHover& hover : screen.hovers) {
            const int left = std::max(0, hover.x - captureWidth / 2);
            const int top = std::max(0, hover.y - captureHeight / 2);
            const Image capture = picture.cropped(left, top, captureWidth, captureHeight);
            const PixelBox all{0, 0, capture.width(), capture.height()};
            const Point point{static_cast<double>(hover.x - left),
                              static_cast<double>(hover.y - top)};
            const FoundLines found =
                findLines(screen.kind == "subtitle" ? outlinedTextCore(capture, all)
                                                    : brightness(capture, all),
                          point);
            for (const TextLine& line : found.lines) {
                if (line.box.top <= point.y && line.box.bottom > point.y &&
                    line.box.left <= point.x && line.box.right > point.x) {
                    printLine(screen, recognizer.recognize(found, line, point.x), hover, left, top,
                              judge);
                }
            }
        }
    }
    return true;
}

}  // namespace velmora
