// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "Velmora/TextCapture/ExtractionTrace.h"
#include "Velmora/TextCapture/RecognizedRegion.h"

namespace velmora {

/// Follows an extraction for a command: keeps by which path the text was found and the region that
/// it was read in, and writes one line for each attempt where that was asked for.
class ExtractionReport final : public ExtractionTrace {
  public:
    /// `explain` gets the lines; null for none.
    explicit ExtractionReport(std::ostream* explain) : explain_(explain) {}

    void attemptEnded(const std::string& attempt, const std::string& outcome,
                      double milliseconds) override;
    void regionUsed(const RecognizedRegion& region) override { region_ = region; }
    void finished(std::optional<ExtractionPath> path) override;

    std::optional<ExtractionPath> path() const { return path_; }
    const std::optional<RecognizedRegion>& region() const { return region_; }

  private:
    std::ostream* explain_;
    std::optional<ExtractionPath> path_;
    std::optional<RecognizedRegion> region_;
};

}  // namespace velmora
