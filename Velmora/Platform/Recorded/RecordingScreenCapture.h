// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

#include "Velmora/Platform/Recorded/Recorder.h"
#include "Velmora/Platform/ScreenCapture.h"

namespace velmora {

/// A screen whose pictures are recorded.
class RecordingScreenCapture final : public ScreenCapture {
  public:
    RecordingScreenCapture(std::shared_ptr<ScreenCapture> screen,
                           std::shared_ptr<Recorder> recorder)
        : screen_(std::move(screen)), recorder_(std::move(recorder)) {}

    std::vector<Display> displays() override {
        auto displays = screen_->displays();
        recorder_->change([&](Recording& recording) { recording.displays = displays; });
        return displays;
    }

    std::optional<Image> capture(std::uint64_t displayId, const Rect& rect) override {
        auto image = screen_->capture(displayId, rect);
        recorder_->capture(displayId, rect, image);
        return image;
    }

  private:
    std::shared_ptr<ScreenCapture> screen_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace velmora
