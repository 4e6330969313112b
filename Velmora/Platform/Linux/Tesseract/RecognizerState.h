// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Velmora/Platform/Recognition/RecognizerMessage.h"
#include "Velmora/Platform/RecognitionStatus.h"

namespace velmora {

/// How far recognition is. A plain value.
struct RecognizerState {
    enum class Worker {
        notStarted,
        loading,     ///< Started, its languages are being loaded.
        ready,       ///< Answers requests.
        unavailable  ///< The worker program is missing or does not stay alive.
    };

    Worker worker = Worker::notStarted;
    ModelState simplified = ModelState::loading;   ///< Package tesseract-ocr-chi-sim.
    ModelState traditional = ModelState::loading;  ///< Package tesseract-ocr-chi-tra.

    /// Something can be read: the worker answers and has at least one language.
    bool canRead() const {
        return worker == Worker::ready &&
               (simplified == ModelState::ready || traditional == ModelState::ready);
    }

    /// One line for people: "ready", "loading", or what is wrong and the package that mends it.
    std::string description() const;

    /// The same as others see it.
    RecognitionStatus status() const;
};

}  // namespace velmora
