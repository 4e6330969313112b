// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <memory>

#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"

namespace velmora::testing {

/// A recogniser with its languages loaded, without words and forms: one worker for all tests of
/// the program, for loading it takes a while.
inline TesseractRecognizer& sharedRecognizer() {
    static const auto shared = [] {
        auto made = std::make_unique<TesseractRecognizer>(
            TesseractRecognizer::Options{{}, {}, std::chrono::milliseconds(20000)});
        made->start();
        made->waitUntilReady(std::chrono::milliseconds(60000));
        return made;
    }();
    return *shared;
}

}  // namespace velmora::testing
