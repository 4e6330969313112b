// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/RememberingLineReader.h"

namespace velmora {

namespace {

/// FNV-1a over all pixels.
std::uint64_t hashOf(const GrayImage& image) {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const std::uint8_t pixel : image.pixels()) {
        hash = (hash ^ pixel) * 1099511628211ULL;
    }
    return hash;
}

}  // namespace

std::optional<LineReading> RememberingLineReader::read(const GrayImage& line, ScriptModel model) {
    const std::uint64_t hash = hashOf(line);
    for (const Memory& memory : memories_) {
        if (memory.hash == hash && memory.width == line.width() && memory.model == model) {
            return memory.reading;
        }
    }
    std::optional<LineReading> reading = reader_.read(line, model);
    if (reading) {
        if (memories_.size() >= mostLines) {
            memories_.pop_front();
        }
        memories_.push_back({hash, line.width(), model, *reading});
    }
    return reading;
}

}  // namespace velmora
