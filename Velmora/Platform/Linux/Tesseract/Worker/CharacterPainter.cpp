// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/CharacterPainter.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "Velmora/Platform/Linux/Tesseract/Worker/FontStream.h"

namespace velmora {

namespace {

struct FontFile {
    std::string path;
    int index = 0;
};

/// The sans serif font that the system prefers for a language.
FontFile preferredFont(const char* language) {
    FontFile found;
    FcPattern* wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>("sans-serif"));
    FcLangSet* languages = FcLangSetCreate();
    FcLangSetAdd(languages, reinterpret_cast<const FcChar8*>(language));
    FcPatternAddLangSet(wanted, FC_LANG, languages);
    FcLangSetDestroy(languages);
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, wanted, &result);
    FcChar8* path = nullptr;
    if (match != nullptr && FcPatternGetString(match, FC_FILE, 0, &path) == FcResultMatch) {
        found.path = reinterpret_cast<const char*>(path);
        FcPatternGetInteger(match, FC_INDEX, 0, &found.index);
    }
    if (match != nullptr) {
        FcPatternDestroy(match);
    }
    FcPatternDestroy(wanted);
    return found;
}

void copyGlyph(const FT_GlyphSlot glyph, int baseline, GrayImage& picture) {
    for (unsigned y = 0; y < glyph->bitmap.rows; ++y) {
        const int row = baseline - glyph->bitmap_top + static_cast<int>(y);
        for (unsigned x = 0; x < glyph->bitmap.width; ++x) {
            const int column = glyph->bitmap_left + static_cast<int>(x);
            if (row < 0 || row >= picture.height() || column < 0 || column >= picture.width()) {
                continue;
            }
            const std::uint8_t* source =
                glyph->bitmap.buffer + static_cast<std::ptrdiff_t>(y) * glyph->bitmap.pitch;
            picture.at(column, row) = static_cast<std::uint8_t>(255 - source[x]);
        }
    }
}

}  // namespace

struct CharacterPainter::Implementation {
    std::array<FontStream, 2> streams;  ///< Must outlive the faces.
    FT_Library library = nullptr;
    std::array<FT_Face, 2> faces{};
    bool opened = false;

    ~Implementation() {
        for (FT_Face face : faces) {
            if (face != nullptr) {
                FT_Done_Face(face);
            }
        }
        if (library != nullptr) {
            FT_Done_FreeType(library);
        }
    }

    void open() {
        opened = true;
        if (FT_Init_FreeType(&library) != 0) {
            library = nullptr;
            return;
        }
        const std::array<const char*, 2> languages{"zh-cn", "zh-tw"};
        for (std::size_t i = 0; i < faces.size(); ++i) {
            const FontFile file = preferredFont(languages[i]);
            faces[i] =
                file.path.empty() ? nullptr : streams[i].open(library, file.path, file.index);
        }
        FcFini();
    }
};

CharacterPainter::CharacterPainter() : implementation_(std::make_unique<Implementation>()) {}

CharacterPainter::~CharacterPainter() = default;

std::optional<GrayImage> CharacterPainter::draw(char32_t character, ScriptModel style, int size) {
    Implementation& fonts = *implementation_;
    if (!fonts.opened) {
        fonts.open();
    }
    FT_Face face = fonts.faces[static_cast<std::size_t>(style)];
    if (face == nullptr || FT_Set_Pixel_Sizes(face, 0, static_cast<FT_UInt>(size)) != 0) {
        return std::nullopt;
    }
    const FT_UInt glyph = FT_Get_Char_Index(face, character);
    if (glyph == 0 ||
        FT_Load_Glyph(face, glyph, FT_LOAD_RENDER | FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP) != 0 ||
        face->glyph->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY) {
        return std::nullopt;
    }
    GrayImage picture(size, size, 255);
    copyGlyph(face->glyph, static_cast<int>(size * 0.88), picture);
    return picture;
}

}  // namespace velmora
