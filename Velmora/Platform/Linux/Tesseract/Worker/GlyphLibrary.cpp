// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphLibrary.h"

#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace velmora {

namespace {

constexpr int leastPriority = 19;

/// The thread's own priority, as Linux counts them one by one; signals are the main thread's.
void giveWay() {
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), leastPriority);
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

}  // namespace

GlyphLibrary::~GlyphLibrary() {
    cancelled_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
}

void GlyphLibrary::know(KnowGlyphsRequest request) {
    cancelled_ = true;
    if (thread_.joinable()) {
        thread_.join();
    }
    cancelled_ = false;
    thread_ = std::thread([this, request = std::move(request)] { prepare(request); });
}

void GlyphLibrary::prepare(const KnowGlyphsRequest& request) {
    std::vector<FontFace> faces = GlyphFonts::installed();
    const std::filesystem::path file = std::filesystem::path(request.folder) / "glyphs.bin";
    const std::uint64_t key = GlyphStore::keyOf(request.characters, faces);
    std::unique_ptr<GlyphStore> store = GlyphStore::map(file.string(), key);
    if (!store && !request.folder.empty() && !faces.empty()) {
        giveWay();
        std::error_code error;
        std::filesystem::create_directories(file.parent_path(), error);
        GlyphFonts fonts(faces);
        if (GlyphStore::write(file.string(), request.characters, fonts,
                              [this] { return cancelled_.load(); })) {
            store = GlyphStore::map(file.string(), key);
        }
    }
    if (store) {
        const std::lock_guard lock(mutex_);
        readyStore_ = std::move(store);
        readyFonts_ = std::make_unique<GlyphFonts>(std::move(faces));
    }
    ::malloc_trim(0);
}

std::optional<MatchedCells> GlyphLibrary::match(const CellsToMatch& request) {
    {
        const std::lock_guard lock(mutex_);
        if (readyStore_) {
            matcher_.reset();
            store_ = std::move(readyStore_);
            fonts_ = std::move(readyFonts_);
            matcher_ = std::make_unique<GlyphMatcher>(*fonts_, &companion_);
        }
    }
    return matcher_ ? std::optional(matcher_->match(request, *store_)) : std::nullopt;
}

void GlyphLibrary::rest() {
    if (store_) {
        store_->rest();
        matcher_->rest();
    }
}

}  // namespace velmora
