// SPDX-License-Identifier: MIT
#include <fontconfig/fontconfig.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"

namespace velmora {

namespace {

constexpr std::size_t mostBold = 2;
constexpr std::size_t mostBitmaps = 1;

/// Regional doubles that no Chinese text is set in, and fixed-width ones with the same characters.
bool isDouble(std::string_view family) {
    for (const std::string_view ending : {" JP", " KR", " HK", " K", " J", "MBE"}) {
        if (family.size() > ending.size() &&
            family.substr(family.size() - ending.size()) == ending) {
            return true;
        }
    }
    return family.find(" Mono") != std::string_view::npos;
}

/// The doubles that programs ask for to have bitmaps at small sizes.
bool isForBitmaps(std::string_view family) {
    return family.find(" Sharp") != std::string_view::npos;
}

std::string textOf(const FcPattern* pattern, const char* object) {
    FcChar8* text = nullptr;
    return FcPatternGetString(pattern, object, 0, &text) == FcResultMatch
               ? reinterpret_cast<const char*>(text)
               : std::string();
}

int numberOf(const FcPattern* pattern, const char* object, int otherwise) {
    int value = otherwise;
    FcPatternGetInteger(pattern, object, 0, &value);
    return value;
}

bool hasLanguage(const FcPattern* pattern, const char* language) {
    FcLangSet* languages = nullptr;
    return FcPatternGetLangSet(pattern, FC_LANG, 0, &languages) == FcResultMatch &&
           FcLangSetHasLang(languages, reinterpret_cast<const FcChar8*>(language)) == FcLangEqual;
}

class FaceList {
  public:
    /// Takes a font up unless it is there, is a double, or there are enough of its weight.
    void consider(const FcPattern* pattern) {
        FcBool scalable = FcFalse;
        FcPatternGetBool(pattern, FC_SCALABLE, 0, &scalable);
        FontFace face{textOf(pattern, FC_FILE), numberOf(pattern, FC_INDEX, 0), 0,
                      numberOf(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR) > FC_WEIGHT_MEDIUM};
        face.bitmaps = isForBitmaps(textOf(pattern, FC_FAMILY));
        // The upper half of an index names an instance of a variable font.
        const bool usable = scalable == FcTrue && (face.index >> 16) == 0 && !face.path.empty() &&
                            numberOf(pattern, FC_SLANT, FC_SLANT_ROMAN) == FC_SLANT_ROMAN &&
                            !isDouble(textOf(pattern, FC_FAMILY)) &&
                            (hasLanguage(pattern, "zh-cn") || hasLanguage(pattern, "zh-tw"));
        const bool known = std::any_of(faces.begin(), faces.end(), [&](const FontFace& other) {
            return other.path == face.path && other.index == face.index;
        });
        struct stat status {};
        if (!usable || known || !hasRoomFor(face) || ::stat(face.path.c_str(), &status) != 0) {
            return;
        }
        face.modified = static_cast<long long>(status.st_mtime);
        faces.push_back(std::move(face));
    }

    std::vector<FontFace> faces;

  private:
    static constexpr std::size_t mostPlain = GlyphFonts::mostFaces - mostBold - mostBitmaps;

    static int kindOf(const FontFace& face) { return face.bold ? 2 : face.bitmaps ? 1 : 0; }

    bool hasRoomFor(const FontFace& face) const {
        constexpr std::array<std::size_t, 3> most{mostPlain, mostBitmaps, mostBold};
        const int kind = kindOf(face);
        const auto count = std::count_if(faces.begin(), faces.end(), [kind](const FontFace& other) {
            return kindOf(other) == kind;
        });
        return static_cast<std::size_t>(count) < most[static_cast<std::size_t>(kind)];
    }
};

/// What the system would use for a kind of font in a language, the best first.
void considerPreferred(FaceList& list, const char* family, const char* language) {
    FcPattern* wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcPatternAddString(wanted, FC_LANG, reinterpret_cast<const FcChar8*>(language));
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    if (FcPattern* match = FcFontMatch(nullptr, wanted, &result)) {
        list.consider(match);
        FcPatternDestroy(match);
    }
    FcPatternDestroy(wanted);
}

void considerAll(FaceList& list, bool bold) {
    FcPattern* any = FcPatternCreate();
    FcObjectSet* objects = FcObjectSetBuild(FC_FAMILY, FC_FILE, FC_INDEX, FC_WEIGHT, FC_SLANT,
                                            FC_SCALABLE, FC_LANG, static_cast<char*>(nullptr));
    if (FcFontSet* fonts = FcFontList(nullptr, any, objects)) {
        std::vector<FcPattern*> sorted(fonts->fonts, fonts->fonts + fonts->nfont);
        std::sort(sorted.begin(), sorted.end(), [](const FcPattern* a, const FcPattern* b) {
            return std::pair(textOf(a, FC_FILE), numberOf(a, FC_INDEX, 0)) <
                   std::pair(textOf(b, FC_FILE), numberOf(b, FC_INDEX, 0));
        });
        for (const FcPattern* pattern : sorted) {
            if ((numberOf(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR) > FC_WEIGHT_MEDIUM) == bold) {
                list.consider(pattern);
            }
        }
        FcFontSetDestroy(fonts);
    }
    FcObjectSetDestroy(objects);
    FcPatternDestroy(any);
}

}  // namespace

std::vector<FontFace> GlyphFonts::installed() {
    FaceList list;
    for (const char* family : {"sans-serif", "serif"}) {
        for (const char* language : {"zh-cn", "zh-tw"}) {
            considerPreferred(list, family, language);
        }
    }
    considerAll(list, false);
    considerAll(list, true);
    FcFini();
    return std::move(list.faces);
}

}  // namespace velmora
