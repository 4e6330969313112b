// SPDX-License-Identifier: MIT
#include "Velmora/Diagnostics/QALogRecord.h"

#include <cmath>
#include <string>

namespace velmora {

namespace {

using nlohmann::json;

constexpr int schemaVersion = 1;

json textOrNull(const std::optional<std::string_view>& text) {
    return text ? json(std::string(*text)) : json(nullptr);
}

json entryObject(const LookupResult& result, const std::optional<std::string_view>& mode) {
    return {{"matchedWord", result.matchedText},
            {"entrySimplified", result.entry.simplified},
            {"pinyin", result.entry.pinyinMarked},
            {"mode", textOrNull(mode)}};
}

json probeObject(const TextProbe& probe) {
    const bool hovered = probe.source == TextProbe::Source::hoveredText;
    return {{"text", probe.text},
            {"hoveredCharacterOffset", probe.hoveredCharacterOffset},
            {"source", hovered ? "hoveredText" : "selectedText"}};
}

json rectObject(const Rect& rect) {
    return {{"x", rect.x}, {"y", rect.y}, {"width", rect.width}, {"height", rect.height}};
}

}  // namespace

std::optional<json> qaLogObject(const LookupRecord& record, double timestamp) {
    const bool finite = std::isfinite(timestamp) && std::isfinite(record.cursorPoint.x) &&
                        std::isfinite(record.cursorPoint.y) &&
                        (!record.anchorRect || record.anchorRect->isFinite());
    if (!finite) {
        return std::nullopt;
    }
    json results = json::array();
    for (const LookupResult& result : record.results) {
        results.push_back(entryObject(result, record.mode));
    }
    json object = json::object();
    object["schemaVersion"] = schemaVersion;
    object["ts"] = timestamp;
    object["event"] = std::string(record.event);
    object["cursorPoint"] = {{"x", record.cursorPoint.x}, {"y", record.cursorPoint.y}};
    object["probe"] = record.probe != nullptr ? probeObject(*record.probe) : json(nullptr);
    object["match"] =
        record.match != nullptr ? entryObject(*record.match, record.mode) : json(nullptr);
    object["results"] = std::move(results);
    object["anchorRect"] = record.anchorRect ? rectObject(*record.anchorRect) : json(nullptr);
    object["reason"] = textOrNull(record.reason);
    return object;
}

}  // namespace velmora
