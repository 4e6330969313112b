// SPDX-License-Identifier: MIT
// The messages about the forms of characters.
#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Recognition/MessageBody.h"
#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {

namespace {

using Kind = RecognizerMessage::Kind;

constexpr std::uint32_t greatestCodePoint = 0x10FFFF;
constexpr double greatestEm = 256;
constexpr float greatestSize = 512;
constexpr std::uint32_t mostFaces = 256;
constexpr std::uint32_t mostRenderings = 4;
constexpr std::size_t longestFolder = 4096;

void putCharacters(MessageWriter& writer, const std::vector<char32_t>& characters,
                   std::size_t limit) {
    const std::size_t count = std::min(characters.size(), limit);
    writer.put(static_cast<std::uint32_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
        writer.put(static_cast<std::uint32_t>(characters[i]));
    }
}

bool getCharacters(MessageReader& reader, std::vector<char32_t>& characters, std::size_t limit) {
    std::uint32_t count = 0;
    if (!reader.get(count) || count > limit) {
        return false;
    }
    for (std::uint32_t i = 0; i < count; ++i) {
        std::uint32_t character = 0;
        if (!reader.get(character) || character > greatestCodePoint) {
            return false;
        }
        characters.push_back(static_cast<char32_t>(character));
    }
    return true;
}

void putStyle(MessageWriter& writer, const std::optional<LineStyle>& style) {
    writer.put(static_cast<std::uint32_t>(style ? 1 : 0));
    if (style) {
        writer.put(style->face);
        writer.put(style->rendering);
        writer.put(style->size);
        writer.put(style->fit);
    }
}

bool getStyle(MessageReader& reader, std::optional<LineStyle>& result) {
    std::uint32_t count = 0;
    if (!reader.get(count) || count > 1) {
        return false;
    }
    if (count == 0) {
        return true;
    }
    LineStyle style;
    if (!reader.get(style.face) || !reader.get(style.rendering) || !reader.get(style.size) ||
        !reader.get(style.fit) || style.face >= mostFaces || style.rendering >= mostRenderings ||
        !(style.size > 0 && style.size <= greatestSize) || !std::isfinite(style.fit)) {
        return false;
    }
    result = style;
    return true;
}

bool getMatch(MessageReader& reader, GlyphMatch& match) {
    std::uint32_t character = 0;
    if (!reader.get(character) || !reader.get(match.shape) || !reader.get(match.exact) ||
        character > greatestCodePoint || !std::isfinite(match.shape) ||
        !std::isfinite(match.exact)) {
        return false;
    }
    match.character = static_cast<char32_t>(character);
    return true;
}

}  // namespace

RecognizerMessage makeKnowGlyphs(const KnowGlyphsRequest& request) {
    MessageWriter writer;
    const std::size_t length = std::min(request.folder.size(), longestFolder);
    writer.put(static_cast<std::uint32_t>(length));
    writer.putBytes(request.folder.data(), length);
    putCharacters(writer, request.characters, RecognizerMessage::mostCharacters);
    return {Kind::knowGlyphs, 0, writer.take()};
}

std::optional<KnowGlyphsRequest> parseKnowGlyphs(const RecognizerMessage& message) {
    MessageReader reader(message.body);
    KnowGlyphsRequest request;
    std::uint32_t length = 0;
    if (message.kind != Kind::knowGlyphs || !reader.get(length) || length > longestFolder ||
        !reader.getText(length, request.folder) ||
        !getCharacters(reader, request.characters, RecognizerMessage::mostCharacters) ||
        !reader.rest().empty() ||
        !std::is_sorted(request.characters.begin(), request.characters.end())) {
        return std::nullopt;
    }
    return request;
}

RecognizerMessage makeMatchCells(const CellsToMatch& request) {
    MessageWriter writer;
    const std::size_t count = std::min(request.cells.size(), CellsToMatch::mostCells);
    writer.put(static_cast<float>(request.em));
    writer.put(static_cast<std::uint32_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
        writer.put(static_cast<std::int32_t>(request.cells[i].cell.left));
        writer.put(static_cast<std::int32_t>(request.cells[i].cell.right));
        putCharacters(writer, request.cells[i].candidates, CellsToMatch::mostCandidates);
    }
    putStyle(writer, request.style);
    writer.putPicture(request.strip);
    return {Kind::matchCells, 0, writer.take()};
}

std::optional<CellsToMatch> parseMatchCells(const RecognizerMessage& message) {
    MessageReader reader(message.body);
    CellsToMatch request;
    float em = 0;
    std::uint32_t count = 0;
    if (message.kind != Kind::matchCells || !reader.get(em) || !(em > 0 && em <= greatestEm) ||
        !reader.get(count) || count > CellsToMatch::mostCells) {
        return std::nullopt;
    }
    request.em = em;
    request.cells.resize(count);
    for (CellToMatch& cell : request.cells) {
        std::int32_t left = 0;
        std::int32_t right = 0;
        if (!reader.get(left) || !reader.get(right) || left < 0 || right < left ||
            right > RecognizerMessage::greatestWidth ||
            !getCharacters(reader, cell.candidates, CellsToMatch::mostCandidates)) {
            return std::nullopt;
        }
        cell.cell = {left, right};
    }
    if (!getStyle(reader, request.style)) {
        return std::nullopt;
    }
    std::optional<GrayImage> strip = reader.getPicture();
    if (!strip) {
        return std::nullopt;
    }
    request.strip = std::move(*strip);
    return request;
}

RecognizerMessage makeMatches(const MatchedCells& matches) {
    MessageWriter writer;
    writer.put(matches.fontFit);
    writer.put(static_cast<std::uint32_t>(matches.cells.size()));
    for (const std::vector<GlyphMatch>& cell : matches.cells) {
        const std::size_t count = std::min(cell.size(), CellsToMatch::mostMatches);
        writer.put(static_cast<std::uint32_t>(count));
        for (std::size_t i = 0; i < count; ++i) {
            writer.put(static_cast<std::uint32_t>(cell[i].character));
            writer.put(cell[i].shape);
            writer.put(cell[i].exact);
        }
    }
    putStyle(writer, matches.style);
    return {Kind::matches, 0, writer.take()};
}

std::optional<MatchedCells> parseMatches(const RecognizerMessage& message) {
    MessageReader reader(message.body);
    MatchedCells matches;
    std::uint32_t count = 0;
    if (message.kind != Kind::matches || !reader.get(matches.fontFit) ||
        !std::isfinite(matches.fontFit) || !reader.get(count) || count > CellsToMatch::mostCells) {
        return std::nullopt;
    }
    matches.cells.resize(count);
    for (std::vector<GlyphMatch>& cell : matches.cells) {
        std::uint32_t size = 0;
        if (!reader.get(size) || size > CellsToMatch::mostMatches) {
            return std::nullopt;
        }
        cell.resize(size);
        for (GlyphMatch& match : cell) {
            if (!getMatch(reader, match)) {
                return std::nullopt;
            }
        }
    }
    if (!getStyle(reader, matches.style)) {
        return std::nullopt;
    }
    return matches;
}

}  // namespace velmora
