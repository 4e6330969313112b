// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/RememberingLineReader.h"

#include <bit>

namespace velmora {

namespace {

/// FNV-1a over whatever is mixed in.
class Hash {
  public:
    void mix(std::uint64_t value) { value_ = (value_ ^ value) * 1099511628211ULL; }
    void mix(const GrayImage& image) {
        for (const std::uint8_t pixel : image.pixels()) {
            mix(std::uint64_t{pixel});
        }
    }
    std::uint64_t value() const { return value_; }

  private:
    std::uint64_t value_ = 14695981039346656037ULL;
};

std::uint64_t hashOf(const GrayImage& image) {
    Hash hash;
    hash.mix(image);
    return hash.value();
}

std::uint64_t hashOf(const CellsToMatch& request) {
    Hash hash;
    hash.mix(request.strip);
    hash.mix(std::bit_cast<std::uint64_t>(request.em));
    for (const CellToMatch& cell : request.cells) {
        hash.mix(static_cast<std::uint64_t>(cell.cell.left));
        hash.mix(static_cast<std::uint64_t>(cell.cell.right));
        for (const char32_t candidate : cell.candidates) {
            hash.mix(std::uint64_t{candidate});
        }
    }
    if (request.style) {
        hash.mix(std::uint64_t{request.style->face});
        hash.mix(std::uint64_t{request.style->rendering});
        hash.mix(std::uint64_t{std::bit_cast<std::uint32_t>(request.style->size)});
        hash.mix(std::uint64_t{std::bit_cast<std::uint32_t>(request.style->fit)});
    }
    return hash.value();
}

}  // namespace

const LineReading* RememberingLineReader::remembered(std::uint64_t hash, int width,
                                                     ScriptModel model) const {
    for (const Memory& memory : memories_) {
        if (memory.hash == hash && memory.width == width && memory.model == model) {
            return &memory.reading;
        }
    }
    return nullptr;
}

bool RememberingLineReader::begin(const GrayImage& line, ScriptModel model) {
    return remembered(hashOf(line), line.width(), model) != nullptr || reader_.begin(line, model);
}

std::optional<LineReading> RememberingLineReader::read(const GrayImage& line, ScriptModel model) {
    const std::uint64_t hash = hashOf(line);
    if (const LineReading* known = remembered(hash, line.width(), model)) {
        return *known;
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

std::optional<MatchedCells> RememberingLineReader::matchCells(const CellsToMatch& request) {
    const std::uint64_t hash = hashOf(request);
    for (const Comparison& known : comparisons_) {
        if (known.hash == hash && known.width == request.strip.width() &&
            known.cells == request.cells.size()) {
            return known.matches;
        }
    }
    std::optional<MatchedCells> matches = reader_.matchCells(request);
    if (matches) {
        if (comparisons_.size() >= mostComparisons) {
            comparisons_.pop_front();
        }
        comparisons_.push_back({hash, request.strip.width(), request.cells.size(), *matches});
    }
    return matches;
}

}  // namespace velmora
