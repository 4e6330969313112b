// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Velmora/Platform/Recognition/GlyphMatch.h"
#include "Velmora/Platform/Recognition/GrayImage.h"
#include "Velmora/Platform/Recognition/LineReading.h"

namespace velmora {

/// What the program and its recognition worker say to each other. Every message is a header and a
/// body of at most `greatestBody` bytes, in the machine's own byte order (both are one program on
/// one machine). Neither side trusts the other: whatever does not parse is refused as a whole.
struct RecognizerMessage {
    enum class Kind : std::uint32_t {
        readLine = 1,       ///< To the worker: model and picture.
        drawCharacter = 2,  ///< To the worker: character, style and size.
        loading = 3,        ///< From the worker: it begins to load this model.
        loaded = 4,         ///< From the worker: how loading this model ended.
        ready = 5,          ///< From the worker: it answers requests now.
        reading = 6,        ///< Answer: symbols.
        picture = 7,        ///< Answer: a picture.
        failed = 8,         ///< Answer: nothing.
        knowGlyphs = 9,     ///< To the worker: the characters that words consist of, and a folder.
        matchCells = 10,    ///< To the worker: a piece of a line and its cells.
        matches = 11,       ///< Answer: what the cells are like.
        understood = 12,    ///< Answer to knowGlyphs: it is being done.
        beginLine = 13,     ///< To the worker: as readLine, which will follow; has no answer.
    };

    Kind kind = Kind::failed;
    std::uint32_t sequence = 0;  ///< An answer carries that of its request.
    std::vector<std::uint8_t> body;

    static constexpr std::size_t headerSize = 16;
    static constexpr std::size_t greatestBody = std::size_t{1} << 20;
    static constexpr int greatestWidth = 8192;
    static constexpr int greatestHeight = 256;
    static constexpr std::size_t mostSymbols = 1024;
    static constexpr std::size_t mostCharacters = 60000;
};

/// How loading a model ended.
enum class ModelState : std::uint32_t { loading = 0, ready = 1, missing = 2, damaged = 3 };

struct ReadLineRequest {
    ScriptModel model = ScriptModel::simplified;
    GrayImage line;
};

struct DrawCharacterRequest {
    char32_t character = 0;
    ScriptModel style = ScriptModel::simplified;
    int size = 0;
};

/// The characters whose forms are to be at hand, sorted, and the folder that keeps them from one
/// start to the next; empty where there is none.
struct KnowGlyphsRequest {
    std::string folder;
    std::vector<char32_t> characters;
};

struct ModelReport {
    ScriptModel model = ScriptModel::simplified;
    ModelState state = ModelState::loading;
};

/// Header and body as they go over the wire.
std::vector<std::uint8_t> encodeMessage(const RecognizerMessage& message);

/// The kind, sequence and body length that a header announces; nothing where it is no header of
/// ours or announces too much. `body` of the result has that length.
std::optional<RecognizerMessage> decodeHeader(std::span<const std::uint8_t> header);

RecognizerMessage makeReadLine(const ReadLineRequest& request);
RecognizerMessage makeBeginLine(const ReadLineRequest& request);
RecognizerMessage makeDrawCharacter(const DrawCharacterRequest& request);
RecognizerMessage makeKnowGlyphs(const KnowGlyphsRequest& request);
RecognizerMessage makeMatchCells(const CellsToMatch& request);
RecognizerMessage makeMatches(const MatchedCells& matches);
RecognizerMessage makeModelReport(RecognizerMessage::Kind kind, const ModelReport& report);
RecognizerMessage makeReading(const LineReading& reading);
RecognizerMessage makePicture(const GrayImage& picture);

// Each of these gives nothing where the message is of another kind or damaged.
std::optional<ReadLineRequest> parseReadLine(const RecognizerMessage& message);
std::optional<ReadLineRequest> parseBeginLine(const RecognizerMessage& message);
std::optional<DrawCharacterRequest> parseDrawCharacter(const RecognizerMessage& message);
std::optional<KnowGlyphsRequest> parseKnowGlyphs(const RecognizerMessage& message);
std::optional<CellsToMatch> parseMatchCells(const RecognizerMessage& message);
std::optional<MatchedCells> parseMatches(const RecognizerMessage& message);
std::optional<ModelReport> parseModelReport(const RecognizerMessage& message);
std::optional<LineReading> parseReading(const RecognizerMessage& message);
std::optional<GrayImage> parsePicture(const RecognizerMessage& message);

}  // namespace velmora
