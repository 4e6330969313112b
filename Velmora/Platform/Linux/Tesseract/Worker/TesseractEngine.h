// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "Velmora/Platform/Recognition/GrayImage.h"
#include "Velmora/Platform/Recognition/LineReading.h"
#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {

/// One Tesseract language. Not for several threads at once.
class TesseractEngine {
  public:
    TesseractEngine();
    ~TesseractEngine();
    TesseractEngine(const TesseractEngine&) = delete;
    TesseractEngine& operator=(const TesseractEngine&) = delete;

    /// Loads the language's data from a folder: ready, missing or damaged.
    ModelState load(const std::string& dataFolder, ScriptModel model);

    /// Reads one line of black text on white; nothing where Tesseract failed.
    std::optional<LineReading> read(const GrayImage& line);

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace velmora
