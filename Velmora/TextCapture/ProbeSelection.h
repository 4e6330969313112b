// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/TextCapture/DesktopFlip.h"
#include "Velmora/TextCapture/RecognizedRegion.h"
#include "Velmora/TextCapture/ReferenceSource.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "Velmora/TextCapture/TracedAttempt.h"

namespace velmora {

/// Chooses one probe among the lines of a recognised region.
class ProbeSelection {
  public:
    /// The pointer and the excluded rectangles (our own panels) are in capture space. Runs on the
    /// extraction queue.
    ProbeSelection(const RecognizedRegion& region, Point pointer, std::vector<Rect> excluding,
                   const std::vector<ReferenceSource>& referenceSources, const DesktopFlip& flip);

    /// A probe of the line nearest to the pointer on which its character can be told.
    std::optional<TextProbe> selectProbe(TracedAttempt& attempt) const;

  private:
    using Observation = RecognizedRegion::Observation;

    bool isOwnPanel(const Observation& line) const;
    std::vector<const Observation*> orderedLines() const;
    std::optional<TextProbe> probe(const Observation& line) const;

    const RecognizedRegion& region_;
    Point pointer_;
    Point imagePoint_;
    std::vector<Rect> excluding_;
    const std::vector<ReferenceSource>& referenceSources_;
    std::vector<std::string> references_;
    DesktopFlip flip_;
};

}  // namespace velmora
