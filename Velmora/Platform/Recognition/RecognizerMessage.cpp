// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/RecognizerMessage.h"

#include <algorithm>
#include <cmath>

#include "Velmora/Platform/Recognition/MessageBody.h"

namespace velmora {

namespace {

using Kind = RecognizerMessage::Kind;

constexpr auto greatestKind = static_cast<std::uint32_t>(Kind::beginLine);
constexpr std::uint32_t magic = 0x564C5231;  // "VLR1"
constexpr int greatestDrawing = 128;
constexpr std::size_t longestSymbol = 32;

std::optional<ScriptModel> scriptModel(std::uint32_t value) {
    return value <= 1 ? std::optional(static_cast<ScriptModel>(value)) : std::nullopt;
}

RecognizerMessage message(Kind kind, MessageWriter& writer) {
    return {kind, 0, writer.take()};
}

RecognizerMessage lineMessage(Kind kind, const ReadLineRequest& request) {
    MessageWriter writer;
    writer.put(static_cast<std::uint32_t>(request.model));
    writer.putPicture(request.line);
    return message(kind, writer);
}

std::optional<ReadLineRequest> parseLine(Kind kind, const RecognizerMessage& message) {
    MessageReader reader(message.body);
    std::uint32_t model = 0;
    if (message.kind != kind || !reader.get(model) || !scriptModel(model)) {
        return std::nullopt;
    }
    std::optional<GrayImage> line = reader.getPicture();
    if (!line) {
        return std::nullopt;
    }
    return ReadLineRequest{*scriptModel(model), std::move(*line)};
}

}  // namespace

std::vector<std::uint8_t> encodeMessage(const RecognizerMessage& message) {
    MessageWriter writer;
    writer.put(magic);
    writer.put(static_cast<std::uint32_t>(message.kind));
    writer.put(message.sequence);
    writer.put(static_cast<std::uint32_t>(message.body.size()));
    writer.putBytes(message.body.data(), message.body.size());
    return writer.take();
}

std::optional<RecognizerMessage> decodeHeader(std::span<const std::uint8_t> header) {
    MessageReader reader(header);
    std::uint32_t word = 0;
    std::uint32_t kind = 0;
    std::uint32_t length = 0;
    RecognizerMessage result;
    if (!reader.get(word) || word != magic || !reader.get(kind) || kind < 1 ||
        kind > greatestKind || !reader.get(result.sequence) || !reader.get(length) ||
        length > RecognizerMessage::greatestBody) {
        return std::nullopt;
    }
    result.kind = static_cast<Kind>(kind);
    result.body.resize(length);
    return result;
}

RecognizerMessage makeReadLine(const ReadLineRequest& request) {
    return lineMessage(Kind::readLine, request);
}

RecognizerMessage makeBeginLine(const ReadLineRequest& request) {
    return lineMessage(Kind::beginLine, request);
}

RecognizerMessage makeDrawCharacter(const DrawCharacterRequest& request) {
    MessageWriter writer;
    writer.put(static_cast<std::uint32_t>(request.character));
    writer.put(static_cast<std::uint32_t>(request.style));
    writer.put(static_cast<std::uint32_t>(request.size));
    return message(Kind::drawCharacter, writer);
}

RecognizerMessage makeModelReport(Kind kind, const ModelReport& report) {
    MessageWriter writer;
    writer.put(static_cast<std::uint32_t>(report.model));
    writer.put(static_cast<std::uint32_t>(report.state));
    return message(kind, writer);
}

RecognizerMessage makeReading(const LineReading& reading) {
    MessageWriter writer;
    const std::size_t count = std::min(reading.size(), RecognizerMessage::mostSymbols);
    writer.put(static_cast<std::uint32_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
        const ReadSymbol& symbol = reading[i];
        writer.put(symbol.confidence);
        writer.put(static_cast<float>(symbol.left));
        writer.put(static_cast<float>(symbol.right));
        writer.put(static_cast<std::uint32_t>(symbol.text.size()));
        writer.putBytes(symbol.text.data(), symbol.text.size());
    }
    return message(Kind::reading, writer);
}

RecognizerMessage makePicture(const GrayImage& picture) {
    MessageWriter writer;
    writer.putPicture(picture);
    return message(Kind::picture, writer);
}

std::optional<ReadLineRequest> parseReadLine(const RecognizerMessage& message) {
    return parseLine(Kind::readLine, message);
}

std::optional<ReadLineRequest> parseBeginLine(const RecognizerMessage& message) {
    return parseLine(Kind::beginLine, message);
}

std::optional<DrawCharacterRequest> parseDrawCharacter(const RecognizerMessage& message) {
    MessageReader reader(message.body);
    std::uint32_t character = 0;
    std::uint32_t style = 0;
    std::uint32_t size = 0;
    if (message.kind != Kind::drawCharacter || !reader.get(character) || !reader.get(style) ||
        !reader.get(size) || !reader.rest().empty() || !scriptModel(style) ||
        character > 0x10FFFF || size < 1 || size > greatestDrawing) {
        return std::nullopt;
    }
    return DrawCharacterRequest{static_cast<char32_t>(character), *scriptModel(style),
                                static_cast<int>(size)};
}

std::optional<ModelReport> parseModelReport(const RecognizerMessage& message) {
    MessageReader reader(message.body);
    std::uint32_t model = 0;
    std::uint32_t state = 0;
    if ((message.kind != Kind::loading && message.kind != Kind::loaded) || !reader.get(model) ||
        !reader.get(state) || !scriptModel(model) || state > 3) {
        return std::nullopt;
    }
    return ModelReport{*scriptModel(model), static_cast<ModelState>(state)};
}

std::optional<LineReading> parseReading(const RecognizerMessage& message) {
    MessageReader reader(message.body);
    std::uint32_t count = 0;
    if (message.kind != Kind::reading || !reader.get(count) ||
        count > RecognizerMessage::mostSymbols) {
        return std::nullopt;
    }
    LineReading reading(count);
    for (ReadSymbol& symbol : reading) {
        float left = 0;
        float right = 0;
        std::uint32_t length = 0;
        if (!reader.get(symbol.confidence) || !reader.get(left) || !reader.get(right) ||
            !reader.get(length) || length > longestSymbol || !reader.getText(length, symbol.text) ||
            !std::isfinite(left) || !std::isfinite(right) ||
            !(symbol.confidence >= 0 && symbol.confidence <= 1)) {
            return std::nullopt;
        }
        symbol.left = left;
        symbol.right = right;
    }
    return reading;
}

std::optional<GrayImage> parsePicture(const RecognizerMessage& message) {
    if (message.kind != Kind::picture) {
        return std::nullopt;
    }
    MessageReader reader(message.body);
    return reader.getPicture();
}

}  // namespace velmora
