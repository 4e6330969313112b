// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"
#include "Velmora/Platform/RecognitionStatus.h"
#include "Velmora/Platform/RecognizedText.h"

namespace velmora {

/// One recognised line: its box in normalised image coordinates (0…1, origin at the bottom left)
/// and its readings, the best first.
struct TextObservation {
    Rect boundingBox;
    std::vector<RecognizedText::Pointer> candidates;
};

/// Reads Chinese text in pictures. Used on the extraction queue.
class TextRecognizer {
  public:
    virtual ~TextRecognizer() = default;

    /// The lines of a picture with at most `candidateLimit` readings each; nothing where
    /// recognition failed or is not there. `pointOfInterest` (pixels, origin at the top left) is a
    /// hint: lines near it are read first and most carefully, the others may be left out.
    virtual std::optional<std::vector<TextObservation>> recognize(
        const Image& image, std::optional<Point> pointOfInterest, int candidateLimit) = 0;

    /// Looks once more at the lines of an earlier answer because the pointer now rests at another
    /// place of the same picture. Answers the lines as they are to be taken at that place: read
    /// more carefully, read for the first time, or without candidates where nothing trustworthy
    /// stands. `image` is the picture they came from (empty where it was too large to keep),
    /// `pointOfInterest` its pixel under the pointer. A recogniser that reads every line equally
    /// well wherever the pointer is hands the lines back unchanged, as this default does; nothing
    /// where the second look failed, and then no line is trusted (without the picture the screen is
    /// looked at again).
    virtual std::optional<std::vector<TextObservation>> verify(
        const Image& /*image*/, const std::vector<TextObservation>& lines,
        Point /*pointOfInterest*/, int /*candidateLimit*/) {
        return lines;
    }

    /// How far it is. Any thread; never waits.
    virtual RecognitionStatus status() const { return {}; }
};

}  // namespace velmora
