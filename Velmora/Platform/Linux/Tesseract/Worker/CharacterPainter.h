// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "Velmora/Platform/Recognition/GrayImage.h"
#include "Velmora/Platform/Recognition/LineReading.h"

namespace velmora {

/// Draws single characters with the system's fonts. The fonts are opened on first use.
class CharacterPainter {
  public:
    CharacterPainter();
    ~CharacterPainter();
    CharacterPainter(const CharacterPainter&) = delete;
    CharacterPainter& operator=(const CharacterPainter&) = delete;

    /// The character black on white, its em square filling a picture of `size` pixels; nothing
    /// where the font of that style lacks it.
    std::optional<GrayImage> draw(char32_t character, ScriptModel style, int size);

  private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

}  // namespace velmora
