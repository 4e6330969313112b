// SPDX-License-Identifier: MIT
#include "VelmoraCore/CedictParser.h"

#include <string>
#include <utility>

#include "VelmoraCore/CedictLine.h"
#include "VelmoraCore/LineSplitter.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

std::optional<DictionaryEntry> entryOfLine(std::string_view line) {
    const std::optional<CedictLine> fields = CedictLine::parse(line);
    if (!fields) {
        return std::nullopt;
    }
    std::vector<EntryDefinition> definitions(1);
    definitions.front().glosses = fields->glosses();
    return DictionaryEntry(std::string(fields->simplified), std::string(fields->traditional),
                           std::string(fields->reading), std::move(definitions));
}

}  // namespace

std::vector<DictionaryEntry> CedictParser::parse(std::string_view text) {
    if (!isValidUtf8(text)) {
        return parse(repairedUtf8(text));
    }
    std::vector<DictionaryEntry> entries;
    LineSplitter lines(text);
    while (const auto line = lines.next()) {
        if (auto entry = entryOfLine(*line)) {
            entries.push_back(std::move(*entry));
        }
    }
    return entries;
}

std::optional<DictionaryEntry> CedictParser::parseLine(std::string_view line) {
    return isValidUtf8(line) ? entryOfLine(line) : entryOfLine(repairedUtf8(line));
}

}  // namespace velmora
