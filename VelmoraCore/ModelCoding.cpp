// SPDX-License-Identifier: MIT
#include "VelmoraCore/ModelCoding.h"

#include <limits>
#include <optional>
#include <vector>

namespace velmora {
namespace {

using nlohmann::json;
using nlohmann::ordered_json;

const json& member(const json& object, const char* key) {
    if (!object.is_object()) {
        throw DecodingError("not an object where one is expected");
    }
    const auto found = object.find(key);
    if (found == object.end()) {
        throw DecodingError(std::string("missing key \"") + key + "\"");
    }
    return *found;
}

void read(const json& value, std::string& text) {
    if (!value.is_string()) {
        throw DecodingError("not a string");
    }
    text = value.get_ref<const std::string&>();
}

void read(const json& value, long long& number) {
    constexpr auto largest =
        static_cast<json::number_unsigned_t>(std::numeric_limits<long long>::max());
    if (!value.is_number_integer() ||
        (value.is_number_unsigned() && value.get<json::number_unsigned_t>() > largest)) {
        throw DecodingError("not an integer in range");
    }
    number = value.get<long long>();
}

template <typename Value>
void read(const json& value, Value& result) {
    from_json(value, result);
}

template <typename Value>
void read(const json& value, std::vector<Value>& list) {
    if (!value.is_array()) {
        throw DecodingError("not an array");
    }
    list.clear();
    list.reserve(value.size());
    for (const json& element : value) {
        read(element, list.emplace_back());
    }
}

/// Reads a required member; what is wrong with it is told with its key.
template <typename Value>
void readMember(const json& object, const char* key, Value& result) {
    const json& value = member(object, key);
    try {
        read(value, result);
    } catch (const DecodingError& error) {
        throw DecodingError(std::string("key \"") + key + "\": " + error.what());
    }
}

/// Reads a member that may be missing or null.
template <typename Value>
void readMember(const json& object, const char* key, std::optional<Value>& result) {
    result.reset();
    if (object.is_object() && (!object.contains(key) || object.at(key).is_null())) {
        return;
    }
    readMember(object, key, result.emplace());
}

template <typename Value>
void writeMember(ordered_json& object, const char* key, const std::optional<Value>& value) {
    if (value) {
        object[key] = *value;
    }
}

}  // namespace

void to_json(ordered_json& json, const Uuid& uuid) {
    json = uuid.toString();
}

void to_json(ordered_json& json, PinyinTone tone) {
    json = static_cast<int>(tone);
}

void to_json(ordered_json& json, ChineseScript script) {
    json = rawValue(script);
}

void to_json(ordered_json& json, const PinyinSyllable& syllable) {
    json = ordered_json::object();
    json["numbered"] = syllable.numbered;
    json["marked"] = syllable.marked;
    json["tone"] = syllable.tone;
}

void to_json(ordered_json& json, const EntryDefinition& definition) {
    json = ordered_json::object();
    json["id"] = definition.id;
    writeMember(json, "partOfSpeech", definition.partOfSpeech);
    json["glosses"] = definition.glosses;
}

void to_json(ordered_json& json, const ExampleSentence& example) {
    json = ordered_json::object();
    json["id"] = example.id;
    json["hanzi"] = example.hanzi;
    json["pinyin"] = example.pinyin;
    json["english"] = example.english;
}

void to_json(ordered_json& json, const DictionaryEntry& entry) {
    json = ordered_json::object();
    json["id"] = entry.id;
    json["simplified"] = entry.simplified;
    json["traditional"] = entry.traditional;
    json["pinyinNumbered"] = entry.pinyinNumbered;
    json["pinyinMarked"] = entry.pinyinMarked;
    json["syllables"] = entry.syllables;
    json["definitions"] = entry.definitions;
    json["examples"] = entry.examples;
    writeMember(json, "hskLevel", entry.hskLevel);
}

void from_json(const json& json, Uuid& uuid) {
    std::string text;
    read(json, text);
    const auto parsed = Uuid::parse(text);
    if (!parsed) {
        throw DecodingError("not a UUID");
    }
    uuid = *parsed;
}

void from_json(const json& json, PinyinTone& tone) {
    long long number = 0;
    read(json, number);
    const auto known = pinyinToneFromRawValue(number);
    if (!known) {
        throw DecodingError("not a tone from 0 to 4");
    }
    tone = *known;
}

void from_json(const json& json, ChineseScript& script) {
    std::string text;
    read(json, text);
    const auto known = chineseScriptFromRawValue(text);
    if (!known) {
        throw DecodingError("not a script");
    }
    script = *known;
}

void from_json(const json& json, PinyinSyllable& syllable) {
    readMember(json, "numbered", syllable.numbered);
    readMember(json, "marked", syllable.marked);
    readMember(json, "tone", syllable.tone);
}

void from_json(const json& json, EntryDefinition& definition) {
    readMember(json, "id", definition.id);
    readMember(json, "partOfSpeech", definition.partOfSpeech);
    readMember(json, "glosses", definition.glosses);
}

void from_json(const json& json, ExampleSentence& example) {
    readMember(json, "id", example.id);
    readMember(json, "hanzi", example.hanzi);
    readMember(json, "pinyin", example.pinyin);
    readMember(json, "english", example.english);
}

void from_json(const json& json, DictionaryEntry& entry) {
    readMember(json, "id", entry.id);
    readMember(json, "simplified", entry.simplified);
    readMember(json, "traditional", entry.traditional);
    readMember(json, "pinyinNumbered", entry.pinyinNumbered);
    readMember(json, "pinyinMarked", entry.pinyinMarked);
    readMember(json, "syllables", entry.syllables);
    readMember(json, "definitions", entry.definitions);
    readMember(json, "examples", entry.examples);
    readMember(json, "hskLevel", entry.hskLevel);
}

std::string jsonText(const ordered_json& json) {
    return json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace velmora
