// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/Recorded/Recording.h"
#include "Velmora/Platform/ScreenCapture.h"

namespace velmora {

/// The pictures of a recording. A rectangle that was not captured is cut out of one that was and
/// holds it, where there is such a one.
class RecordedScreenCapture final : public ScreenCapture {
  public:
    explicit RecordedScreenCapture(std::shared_ptr<const Recording> recording)
        : recording_(std::move(recording)) {}

    std::vector<Display> displays() override { return recording_->displays; }
    std::optional<Image> capture(std::uint64_t displayId, const Rect& rect) override;

  private:
    std::shared_ptr<const Recording> recording_;
};

}  // namespace velmora
