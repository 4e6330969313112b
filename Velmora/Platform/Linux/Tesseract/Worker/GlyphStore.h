// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphFonts.h"
#include "Velmora/Platform/Recognition/GlyphFeatures.h"

namespace velmora {

/// The features of all characters that words consist of, in every font that draws them
/// differently. Lies in a file that is mapped, so that it is made once and shared.
class GlyphStore {
  public:
    struct Neighbour {
        char32_t character = 0;
        float similarity = 0;
    };

    /// What the store of these characters and fonts is known by.
    static std::uint64_t keyOf(const std::vector<char32_t>& characters,
                               const std::vector<FontFace>& faces);

    /// Draws all characters (sorted) with all fonts and writes the store to a file, which appears
    /// only when it is whole. False where that fails or `cancelled` says so in between.
    static bool write(const std::string& path, const std::vector<char32_t>& characters,
                      GlyphFonts& fonts, const std::function<bool()>& cancelled);

    /// The store in a file; null where there is none, another one, or a damaged one.
    static std::unique_ptr<GlyphStore> map(const std::string& path, std::uint64_t key);

    ~GlyphStore();
    GlyphStore(const GlyphStore&) = delete;
    GlyphStore& operator=(const GlyphStore&) = delete;

    std::size_t size() const { return count_; }

    /// Gives the memory back to the system until it is looked at again.
    void rest() const;

    /// The Chinese characters that are most alike, the best first, each once; then so many letters
    /// of other scripts.
    std::vector<Neighbour> nearest(const GlyphFeatures& ink, std::size_t count,
                                   std::size_t letters) const;

    /// How alike the ink is to a character in its best font; 0 for characters that are not here.
    float similarity(const GlyphFeatures& ink, char32_t character) const;

  private:
    GlyphStore(void* memory, std::size_t length);
    std::span<const std::int8_t, GlyphFeatures::size> values(std::size_t entry) const;

    void* memory_;
    std::size_t length_;
    std::size_t count_ = 0;
    const std::uint32_t* characters_ = nullptr;  ///< Sorted; a character may have several entries.
    const std::int8_t* values_ = nullptr;
};

}  // namespace velmora
