// SPDX-License-Identifier: MIT
#include <array>
#include <cstdio>

#include "Velmora/Platform/Recorded/RecordingCoding.h"
#include "Velmora/Platform/Recorded/RecordingText.h"

namespace velmora {

namespace {

using Json = nlohmann::ordered_json;

// All of them first, because they call each other through templates.
Json encode(const std::string& text);
Json encode(std::int64_t number);
Json encode(Recording::ElementIndex index);
Json encode(Point point);
Json encode(Size size);
Json encode(Utf16Range range);
Json encode(const Rect& rect);
Json encode(const Recording::Element& element);
Json encode(const ScreenLayout& screen);
Json encode(const Display& display);
Json encode(const Recording::Candidate& candidate);
Json encode(const Recording::Line& line);
Json encode(const Recording::Recognition& recognition);
Json encode(const Recording::Detected& text);
Json encode(const Recording::Detection& detection);
template <typename Value>
Json encode(const std::optional<Value>& value);
template <typename Item>
Json encode(const std::vector<Item>& items);

Json encode(const std::string& text) {
    return text;
}
Json encode(std::int64_t number) {
    return number;
}
Json encode(Recording::ElementIndex index) {
    return index;
}
Json encode(Point point) {
    return {{"x", point.x}, {"y", point.y}};
}
Json encode(Size size) {
    return {{"width", size.width}, {"height", size.height}};
}
Json encode(Utf16Range range) {
    return {{"location", range.location}, {"length", range.length}};
}
Json encode(const Rect& rect) {
    if (!rect.isFinite()) {
        return nullptr;
    }
    return {{"x", rect.x}, {"y", rect.y}, {"width", rect.width}, {"height", rect.height}};
}

template <typename Value>
Json encode(const std::optional<Value>& value) {
    return value ? encode(*value) : Json(nullptr);
}

/// Sets a key only where the read was made.
template <typename Answer>
void put(Json& json, const char* key, const Recording::Read<Answer>& read) {
    if (read) {
        json[key] = encode(*read);
    }
}

/// Each question's own keys, and its answer.
template <typename Question, typename Answer>
void put(Json& json, const char* key, const Recording::Answers<Question, Answer>& answers) {
    if (answers.empty()) {
        return;
    }
    Json array = Json::array();
    for (const auto& [question, answer] : answers) {
        Json item = encode(question);
        item["answer"] = encode(answer);
        array.push_back(std::move(item));
    }
    json[key] = std::move(array);
}

Json encode(const Recording::Element& element) {
    Json json = Json::object();
    put(json, "parent", element.parent);
    put(json, "selectedText", element.selectedText);
    put(json, "selectedTextRange", element.selectedTextRange);
    put(json, "value", element.value);
    put(json, "title", element.title);
    put(json, "position", element.position);
    put(json, "size", element.size);
    put(json, "longValueLength", element.longValueLength);
    put(json, "rangeForPosition", element.rangeForPosition);
    put(json, "stringForRange", element.stringForRange);
    put(json, "boundsForRange", element.boundsForRange);
    return json;
}

Json encode(const ScreenLayout& screen) {
    return {{"id", screen.id},
            {"frame", encode(screen.nativeFrame)},
            {"ratio", screen.ratio},
            {"workArea", encode(screen.nativeWorkArea)}};
}

Json encode(const Display& display) {
    return {{"id", display.id}, {"bounds", encode(display.bounds)}};
}

Json encode(const Recording::Picture& picture) {
    std::array<char, 20> hash{};
    std::snprintf(hash.data(), hash.size(), "%016llx",
                  static_cast<unsigned long long>(picture.hash));
    return {{"width", picture.width}, {"height", picture.height}, {"hash", hash.data()}};
}

template <typename Item>
Json encode(const std::vector<Item>& items) {
    Json array = Json::array();
    for (const Item& item : items) {
        array.push_back(encode(item));
    }
    return array;
}

Json encode(const Recording::Candidate& candidate) {
    return {{"text", candidate.text},
            {"confidence", candidate.confidence},
            {"boxes", encode(candidate.boxes)}};
}

Json encode(const Recording::Line& line) {
    return {{"box", encode(line.box)}, {"candidates", encode(line.candidates)}};
}

Json encode(const Recording::Recognition& recognition) {
    return {{"picture", encode(recognition.picture)},
            {"point", encode(recognition.point)},
            {"lines", encode(recognition.lines)}};
}

Json encode(const Recording::Detected& text) {
    return {{"box", encode(text.box)}, {"characters", encode(text.characters)}};
}

Json encode(const Recording::Detection& detection) {
    return {{"picture", encode(detection.picture)}, {"texts", encode(detection.texts)}};
}

Json encodeCaptures(const std::vector<Recording::Capture>& captures) {
    Json array = Json::array();
    for (std::size_t index = 0; index < captures.size(); ++index) {
        const Recording::Capture& capture = captures[index];
        array.push_back({{"display", capture.display},
                         {"rect", encode(capture.rect)},
                         {"image", capture.image ? Json(capturePictureName(index)) : Json()}});
    }
    return array;
}

}  // namespace

nlohmann::ordered_json encodeRecording(const Recording& recording) {
    Json json = {{"format", "velmora-recording"}, {"version", 1}};
    json["truncated"] = recording.truncated;
    json["pointer"] = encode(recording.pointer);
    json["screens"] = encode(recording.screens);
    json["elements"] = encode(recording.elements);
    put(json, "hits", recording.hits);
    put(json, "focused", recording.focused);
    json["displays"] = encode(recording.displays);
    json["captures"] = encodeCaptures(recording.captures);
    json["recognitions"] = encode(recording.recognitions);
    json["verifications"] = encode(recording.verifications);
    json["detections"] = encode(recording.detections);
    return json;
}

}  // namespace velmora
