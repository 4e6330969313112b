// SPDX-License-Identifier: MIT
#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H

#include <string>

namespace velmora {

/// A font file that is read piece by piece: mapping it, as the library does by itself, brings
/// twenty megabytes into memory. Must outlive the face.
class FontStream {
  public:
    /// The font at a place in a file, or null.
    FT_Face open(FT_Library library, const std::string& path, int index);

  private:
    FT_StreamRec stream_{};
};

}  // namespace velmora
