// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "Velmora/TextCapture/ExtractionPath.h"

namespace velmora {

struct RecognizedRegion;

/// Follows one extraction, for people who want to know why it found what it found. Called on the
/// thread of the extraction, in the order in which the attempts end.
class ExtractionTrace {
  public:
    virtual ~ExtractionTrace() = default;

    /// One attempt has ended: its name, what it found or why it gave up, and how long it took.
    virtual void attemptEnded(const std::string& attempt, const std::string& outcome,
                              double milliseconds) = 0;

    /// The recognised region that the choice of a line was made from.
    virtual void regionUsed(const RecognizedRegion& /*region*/) {}

    /// The extraction is over; nothing when it found no text.
    virtual void finished(std::optional<ExtractionPath> /*path*/) {}
};

}  // namespace velmora
