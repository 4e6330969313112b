// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphMatcher.h"
#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {

/// The forms of characters and what compares ink with them. They are drawn once, by a thread that
/// gives way to everything else, and kept in a file.
class GlyphLibrary {
  public:
    /// The companion shares in the comparisons.
    explicit GlyphLibrary(Companion& companion) : companion_(companion) {}
    ~GlyphLibrary();
    GlyphLibrary(const GlyphLibrary&) = delete;
    GlyphLibrary& operator=(const GlyphLibrary&) = delete;

    /// Begins to get these characters' forms ready and returns at once.
    void know(KnowGlyphsRequest request);

    /// Nothing where the forms are not ready.
    std::optional<MatchedCells> match(const CellsToMatch& request);

    /// To be called when nothing is asked for: keeps what is slow to make, and no more.
    void rest();

  private:
    void prepare(const KnowGlyphsRequest& request);

    Companion& companion_;
    std::thread thread_;
    std::atomic<bool> cancelled_{false};
    std::mutex mutex_;  ///< Of what the thread hands over:
    std::unique_ptr<GlyphStore> readyStore_;
    std::unique_ptr<GlyphFonts> readyFonts_;
    std::unique_ptr<GlyphStore> store_;
    std::unique_ptr<GlyphFonts> fonts_;
    std::unique_ptr<GlyphMatcher> matcher_;
};

}  // namespace velmora
