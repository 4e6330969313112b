// SPDX-License-Identifier: MIT
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "Velmora/Platform/Recorded/RecordingCoding.h"
#include "VelmoraCore/DecodingError.h"

namespace velmora {

namespace {

using Json = nlohmann::json;

[[noreturn]] void refuse(const std::string& what) {
    throw DecodingError("recording: " + what);
}

/// How a value of each kind is read.
template <typename Value>
struct Decoder;

template <typename Value>
Value decode(const Json& json) {
    return Decoder<Value>::read(json);
}

const Json& member(const Json& json, const char* key) {
    const auto found = json.is_object() ? json.find(key) : json.end();
    if (!json.is_object() || found == json.end()) {
        refuse(std::string("no ") + key);
    }
    return *found;
}

template <typename Value>
Value get(const Json& json, const char* key) {
    return decode<Value>(member(json, key));
}

template <>
struct Decoder<double> {
    static double read(const Json& json) {
        if (!json.is_number() || !std::isfinite(json.get<double>())) {
            refuse("no number");
        }
        return json.get<double>();
    }
};

template <>
struct Decoder<float> {
    static float read(const Json& json) { return static_cast<float>(decode<double>(json)); }
};

template <>
struct Decoder<std::int64_t> {
    static std::int64_t read(const Json& json) {
        if (!json.is_number_integer() ||
            (json.is_number_unsigned() &&
             json.get<std::uint64_t>() >
                 static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))) {
            refuse("no integer");
        }
        return json.get<std::int64_t>();
    }
};

template <>
struct Decoder<std::uint64_t> {
    static std::uint64_t read(const Json& json) {
        if (!json.is_number_unsigned()) {
            refuse("no index");
        }
        return json.get<std::uint64_t>();
    }
};

template <>
struct Decoder<int> {
    static int read(const Json& json) {
        const std::int64_t value = decode<std::int64_t>(json);
        if (value < 0 || value > std::numeric_limits<int>::max()) {
            refuse("no count");
        }
        return static_cast<int>(value);
    }
};

template <>
struct Decoder<std::string> {
    static std::string read(const Json& json) {
        if (!json.is_string()) {
            refuse("no text");
        }
        return json.get<std::string>();
    }
};

template <>
struct Decoder<Point> {
    static Point read(const Json& json) { return {get<double>(json, "x"), get<double>(json, "y")}; }
};

template <>
struct Decoder<Size> {
    static Size read(const Json& json) {
        return {get<double>(json, "width"), get<double>(json, "height")};
    }
};

template <>
struct Decoder<Rect> {
    static Rect read(const Json& json) {
        return {get<double>(json, "x"), get<double>(json, "y"), get<double>(json, "width"),
                get<double>(json, "height")};
    }
};

template <>
struct Decoder<Utf16Range> {
    static Utf16Range read(const Json& json) {
        return {get<std::int64_t>(json, "location"), get<std::int64_t>(json, "length")};
    }
};

template <typename Value>
struct Decoder<std::optional<Value>> {
    static std::optional<Value> read(const Json& json) {
        return json.is_null() ? std::nullopt : std::optional<Value>(decode<Value>(json));
    }
};

template <typename Value>
struct Decoder<std::vector<Value>> {
    static std::vector<Value> read(const Json& json) {
        if (!json.is_array() || json.size() > Recording::mostAnswers) {
            refuse("no list, or too long a one");
        }
        std::vector<Value> values;
        for (const Json& item : json) {
            values.push_back(decode<Value>(item));
        }
        return values;
    }
};

/// A question with its answer: the question's keys and "answer" side by side.
template <typename Question, typename Answer>
struct Decoder<std::pair<Question, std::optional<Answer>>> {
    static std::pair<Question, std::optional<Answer>> read(const Json& json) {
        return {decode<Question>(json), get<std::optional<Answer>>(json, "answer")};
    }
};

template <typename Value>
void readInto(Value& value, const Json& json, const char* key) {
    value = get<Value>(json, key);
}

/// Leaves alone what the JSON does not have.
template <typename Value>
void readIfThere(Value& value, const Json& json, const char* key) {
    if (json.contains(key)) {
        readInto(value, json, key);
    }
}

/// The same for reads, where null is the answer that there is none.
template <typename Answer>
void readAnswer(Recording::Read<Answer>& read, const Json& json, const char* key) {
    if (json.contains(key)) {
        read = get<std::optional<Answer>>(json, key);
    }
}

template <>
struct Decoder<Recording::Element> {
    static Recording::Element read(const Json& json) {
        Recording::Element element;
        readAnswer(element.parent, json, "parent");
        readAnswer(element.selectedText, json, "selectedText");
        readAnswer(element.selectedTextRange, json, "selectedTextRange");
        readAnswer(element.value, json, "value");
        readAnswer(element.title, json, "title");
        readAnswer(element.position, json, "position");
        readAnswer(element.size, json, "size");
        readAnswer(element.longValueLength, json, "longValueLength");
        readIfThere(element.rangeForPosition, json, "rangeForPosition");
        readIfThere(element.stringForRange, json, "stringForRange");
        readIfThere(element.boundsForRange, json, "boundsForRange");
        return element;
    }
};

template <>
struct Decoder<ScreenLayout> {
    static ScreenLayout read(const Json& json) {
        return {get<std::uint64_t>(json, "id"), get<Rect>(json, "frame"),
                get<double>(json, "ratio"), get<Rect>(json, "workArea")};
    }
};

template <>
struct Decoder<Display> {
    static Display read(const Json& json) {
        return {get<std::uint64_t>(json, "id"), get<Rect>(json, "bounds")};
    }
};

template <>
struct Decoder<Recording::Capture> {
    static Recording::Capture read(const Json& json) {
        Recording::Capture capture{get<std::uint64_t>(json, "display"), get<Rect>(json, "rect"),
                                   std::nullopt};
        if (!member(json, "image").is_null()) {
            capture.image = Image(1, 1, {0});
        }
        return capture;
    }
};

template <>
struct Decoder<Recording::Picture> {
    static Recording::Picture read(const Json& json) {
        const auto hash = get<std::string>(json, "hash");
        Recording::Picture picture{get<int>(json, "width"), get<int>(json, "height"), 0};
        const auto [end, error] =
            std::from_chars(hash.data(), hash.data() + hash.size(), picture.hash, 16);
        if (error != std::errc() || end != hash.data() + hash.size()) {
            refuse("no hash");
        }
        return picture;
    }
};

template <>
struct Decoder<Recording::Candidate> {
    static Recording::Candidate read(const Json& json) {
        return {get<std::string>(json, "text"), get<float>(json, "confidence"),
                get<std::vector<std::optional<Rect>>>(json, "boxes")};
    }
};

template <>
struct Decoder<Recording::Line> {
    static Recording::Line read(const Json& json) {
        return {get<Rect>(json, "box"), get<std::vector<Recording::Candidate>>(json, "candidates")};
    }
};

template <>
struct Decoder<Recording::Recognition> {
    static Recording::Recognition read(const Json& json) {
        return {get<Recording::Picture>(json, "picture"), get<std::optional<Point>>(json, "point"),
                get<std::optional<std::vector<Recording::Line>>>(json, "lines")};
    }
};

template <>
struct Decoder<Recording::Detected> {
    static Recording::Detected read(const Json& json) {
        return {get<Rect>(json, "box"), get<std::vector<Rect>>(json, "characters")};
    }
};

template <>
struct Decoder<Recording::Detection> {
    static Recording::Detection read(const Json& json) {
        return {get<Recording::Picture>(json, "picture"),
                get<std::optional<std::vector<Recording::Detected>>>(json, "texts")};
    }
};

/// Elements are referred to by their position in the list.
void checkReferences(const Recording& recording) {
    const auto check = [&](const std::optional<Recording::ElementIndex>& index) {
        if (index && *index >= recording.elements.size()) {
            refuse("no such element");
        }
    };
    for (const auto& element : recording.elements) {
        check(element.parent.value_or(std::nullopt));
    }
    for (const auto& hit : recording.hits) {
        check(hit.second);
    }
    check(recording.focused.value_or(std::nullopt));
}

}  // namespace

Recording decodeRecording(const nlohmann::json& json) {
    if (get<std::string>(json, "format") != "velmora-recording" ||
        get<std::int64_t>(json, "version") != 1) {
        refuse("of another kind");
    }
    Recording recording;
    recording.truncated =
        member(json, "truncated").is_boolean() && member(json, "truncated").get<bool>();
    readInto(recording.pointer, json, "pointer");
    readInto(recording.screens, json, "screens");
    readInto(recording.elements, json, "elements");
    readIfThere(recording.hits, json, "hits");
    readAnswer(recording.focused, json, "focused");
    readInto(recording.displays, json, "displays");
    readInto(recording.captures, json, "captures");
    readInto(recording.recognitions, json, "recognitions");
    readInto(recording.verifications, json, "verifications");
    readInto(recording.detections, json, "detections");
    if (recording.elements.size() > Recording::mostElements) {
        refuse("too many elements");
    }
    checkReferences(recording);
    return recording;
}

}  // namespace velmora
