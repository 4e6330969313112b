// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <list>
#include <utility>

#include "Velmora/Platform/Linux/Tesseract/Worker/FontStream.h"

namespace velmora {

namespace {

constexpr std::size_t mostOpen = 2;  ///< Each takes two megabytes.
constexpr double greatestSize = 160;

FT_Int32 loadFlags(GlyphRendering rendering) {
    switch (rendering) {
        case GlyphRendering::unhinted:
            return FT_LOAD_NO_HINTING | FT_LOAD_NO_BITMAP;
        case GlyphRendering::subpixel:
            return FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP;
        case GlyphRendering::hinted:
            break;
    }
    return FT_LOAD_TARGET_LIGHT;
}

int darknessAt(const FT_Bitmap& bitmap, unsigned x, unsigned y) {
    const std::uint8_t* row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
    switch (bitmap.pixel_mode) {
        case FT_PIXEL_MODE_MONO:
            return ((row[x / 8] >> (7 - x % 8)) & 1) != 0 ? 255 : 0;
        case FT_PIXEL_MODE_LCD: {  // Weighted as brightness is: red, green, blue.
            const std::uint8_t* pixel = row + std::size_t{3} * x;
            return (77 * pixel[0] + 151 * pixel[1] + 28 * pixel[2]) >> 8;
        }
        default:
            return row[x];
    }
}

std::optional<GrayImage> pictureOf(const FT_Bitmap& bitmap) {
    const bool subpixel = bitmap.pixel_mode == FT_PIXEL_MODE_LCD;
    if (bitmap.pixel_mode != FT_PIXEL_MODE_MONO && bitmap.pixel_mode != FT_PIXEL_MODE_GRAY &&
        !subpixel) {
        return std::nullopt;
    }
    const unsigned width = subpixel ? bitmap.width / 3 : bitmap.width;
    if (width < 1 || bitmap.rows < 1 || width > 2 * greatestSize ||
        bitmap.rows > 2 * greatestSize) {
        return std::nullopt;
    }
    GrayImage picture(static_cast<int>(width), static_cast<int>(bitmap.rows));
    for (unsigned y = 0; y < bitmap.rows; ++y) {
        for (unsigned x = 0; x < width; ++x) {
            picture.at(static_cast<int>(x), static_cast<int>(y)) =
                static_cast<std::uint8_t>(255 - darknessAt(bitmap, x, y));
        }
    }
    return picture;
}

}  // namespace

struct GlyphFonts::Implementation {
    struct OpenFace {
        std::size_t number = 0;
        FontStream stream;  ///< Must outlive the face.
        FT_Face face = nullptr;
        double size = 0;

        OpenFace() = default;
        OpenFace(const OpenFace&) = delete;
        OpenFace& operator=(const OpenFace&) = delete;
        ~OpenFace() {
            if (face != nullptr) {
                FT_Done_Face(face);
            }
        }
    };

    std::vector<FontFace> faces;
    FT_Library library = nullptr;
    std::list<OpenFace> open;  ///< The last used first.

    ~Implementation() {
        open.clear();
        if (library != nullptr) {
            FT_Done_FreeType(library);
        }
    }

    FT_Face face(std::size_t number, double size) {
        auto known = std::find_if(open.begin(), open.end(), [number](const OpenFace& candidate) {
            return candidate.number == number;
        });
        if (known == open.end()) {
            if (open.size() >= mostOpen) {
                open.pop_back();
            }
            open.emplace_front();
            known = open.begin();
            known->number = number;
            known->face = known->stream.open(library, faces[number].path, faces[number].index);
        } else {
            open.splice(open.begin(), open, known);
        }
        if (known->face != nullptr && known->size != size) {
            known->size = size;
            const auto points = static_cast<FT_F26Dot6>(std::lround(size * 64));
            if (FT_Set_Char_Size(known->face, 0, points, 72, 72) != 0) {
                known->size = 0;
                return nullptr;
            }
        }
        return known->face;
    }
};

GlyphFonts::GlyphFonts(std::vector<FontFace> faces)
    : implementation_(std::make_unique<Implementation>()) {
    implementation_->faces = std::move(faces);
    if (FT_Init_FreeType(&implementation_->library) != 0) {
        implementation_->library = nullptr;
    }
}

GlyphFonts::~GlyphFonts() = default;

const std::vector<FontFace>& GlyphFonts::faces() const {
    return implementation_->faces;
}

void GlyphFonts::close() {
    implementation_->open.clear();
}

std::optional<GrayImage> GlyphFonts::draw(char32_t character, const GlyphStyle& style) {
    Implementation& fonts = *implementation_;
    if (fonts.library == nullptr || style.face >= fonts.faces.size() || !(style.size >= 4) ||
        style.size > greatestSize) {
        return std::nullopt;
    }
    FT_Face face = fonts.face(style.face, style.size);
    if (face == nullptr) {
        return std::nullopt;
    }
    const FT_UInt glyph = FT_Get_Char_Index(face, character);
    if (glyph == 0 || FT_Load_Glyph(face, glyph, loadFlags(style.rendering)) != 0) {
        return std::nullopt;
    }
    const FT_Render_Mode mode =
        style.rendering == GlyphRendering::subpixel ? FT_RENDER_MODE_LCD : FT_RENDER_MODE_NORMAL;
    if (face->glyph->format != FT_GLYPH_FORMAT_BITMAP && FT_Render_Glyph(face->glyph, mode) != 0) {
        return std::nullopt;
    }
    return pictureOf(face->glyph->bitmap);
}

}  // namespace velmora
