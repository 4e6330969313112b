// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/Platform/TextRectangleDetector.h"

namespace velmora {

/// What the recognize command works with. The recogniser has its languages loaded.
struct RecognizeServices {
    std::shared_ptr<TextRecognizer> textRecognizer;
    std::shared_ptr<TextRectangleDetector> textRectangleDetector;
    std::shared_ptr<Clock> clock;
};

}  // namespace velmora
