// SPDX-License-Identifier: MIT
#include "Velmora/TextCapture/OCRCharacterHit.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "Velmora/TextCapture/CursorEstimation.h"
#include "Velmora/TextCapture/RegionGeometry.h"

namespace velmora {

namespace {

/// The characters of a line that are looked at, each with its box in the candidate's own string.
class ExaminedCharacters {
  public:
    ExaminedCharacters(const RecognizedText& candidate, std::string_view displayText,
                       Size imageSize)
        : candidate_(candidate),
          own_(candidate.string()),
          display_(displayText),
          imageSize_(imageSize) {}

    std::size_t count() const { return examined().count(); }

    /// The box of a character, if that is Chinese and has one.
    std::optional<Rect> chineseBox(std::size_t index) const {
        if (!isChinese(examined()[index])) {
            return std::nullopt;
        }
        return OCRCharacterHit::characterImageRect(candidate_, own_, static_cast<long long>(index),
                                                   imageSize_);
    }

  private:
    const CharacterText& examined() const {
        return display_.count() == own_.count() ? display_ : own_;
    }

    const RecognizedText& candidate_;
    CharacterText own_;
    CharacterText display_;
    Size imageSize_;
};

/// How far the point is from the box, 1 at the end of its reach; nothing where it is out of reach.
std::optional<double> reachScore(const Rect& box, Point point) {
    const double reachX = box.width * 0.5 + std::clamp(box.width * 0.28, 5.0, 12.0);
    const double reachY = box.height * 0.5 + std::clamp(box.height * 0.3, 6.0, 14.0);
    const double dx = std::abs(point.x - box.midX());
    const double dy = std::abs(point.y - box.midY());
    if (!CursorEstimation::isDirectCharacterHit(box, point) && !(dx <= reachX && dy <= reachY)) {
        return std::nullopt;
    }
    return std::hypot(dx / reachX, dy / reachY);
}

}  // namespace

std::optional<Rect> OCRCharacterHit::characterImageRect(const RecognizedText& candidate,
                                                        const CharacterText& ocrText,
                                                        long long offset, Size imageSize) {
    if (offset < 0 || offset > static_cast<long long>(ocrText.count())) {
        return std::nullopt;
    }
    const auto from = static_cast<std::size_t>(offset);
    const auto box = candidate.boundingBox(from, std::min(from + 1, ocrText.count()));
    if (!box || !box->isFinite()) {
        return std::nullopt;
    }
    return imageRectOfNormalizedBox(*box, imageSize);
}

bool OCRCharacterHit::hasResolvableChineseCharacterBoxes(const RecognizedText& candidate,
                                                         std::string_view displayText,
                                                         Size imageSize) {
    const ExaminedCharacters characters(candidate, displayText, imageSize);
    for (std::size_t index = 0; index < characters.count(); ++index) {
        if (characters.chineseBox(index)) {
            return true;
        }
    }
    return false;
}

std::optional<OCRCharacterHit> OCRCharacterHit::cursorCharacterHit(const RecognizedText& candidate,
                                                                   std::string_view displayText,
                                                                   const Rect& /*lineRect*/,
                                                                   Point point, Size imageSize) {
    const ExaminedCharacters characters(candidate, displayText, imageSize);
    std::optional<OCRCharacterHit> best;
    double bestScore = 0;
    for (std::size_t index = 0; index < characters.count(); ++index) {
        const auto box = characters.chineseBox(index);
        const auto score = box ? reachScore(*box, point) : std::optional<double>();
        if (score && (!best || *score < bestScore)) {
            best = OCRCharacterHit{static_cast<long long>(index), *box};
            bestScore = *score;
        }
    }
    return best && bestScore <= 1.0 ? best : std::nullopt;
}

}  // namespace velmora
