// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "VelmoraCore/BoundedJson.h"
#include "VelmoraCore/ChineseScript.h"
#include "VelmoraCore/DecodingError.h"
#include "VelmoraCore/DictionaryEntry.h"

// How the dictionary model is written as JSON: objects with the field names as keys, in the order
// of the fields; an absent optional field is left out; a UUID is its text in upper case, read in
// either case; a tone is its number, a script its name. Reading is strict: a missing key or a value
// of another kind (3.7 or true for an integer) throws DecodingError for the whole value; unknown
// keys are passed over, null counts as absent for optional fields alone. A decoded entry keeps the
// marked reading and the syllables it was stored with.

namespace velmora {

void to_json(nlohmann::ordered_json& json, const Uuid& uuid);
void to_json(nlohmann::ordered_json& json, PinyinTone tone);
void to_json(nlohmann::ordered_json& json, ChineseScript script);
void to_json(nlohmann::ordered_json& json, const PinyinSyllable& syllable);
void to_json(nlohmann::ordered_json& json, const EntryDefinition& definition);
void to_json(nlohmann::ordered_json& json, const ExampleSentence& example);
void to_json(nlohmann::ordered_json& json, const DictionaryEntry& entry);

void from_json(const nlohmann::json& json, Uuid& uuid);
void from_json(const nlohmann::json& json, PinyinTone& tone);
void from_json(const nlohmann::json& json, ChineseScript& script);
void from_json(const nlohmann::json& json, PinyinSyllable& syllable);
void from_json(const nlohmann::json& json, EntryDefinition& definition);
void from_json(const nlohmann::json& json, ExampleSentence& example);
void from_json(const nlohmann::json& json, DictionaryEntry& entry);

/// A JSON value as one line of text. Bytes of strings that are not UTF-8 become U+FFFD.
std::string jsonText(const nlohmann::ordered_json& json);

/// A value of the model as one line of JSON.
template <typename Value>
std::string encodeJson(const Value& value) {
    return jsonText(nlohmann::ordered_json(value));
}

/// A value of the model from JSON text; throws DecodingError, and nothing else.
template <typename Value>
Value decodeJson(std::string_view text, const JsonLimits& limits = {}) {
    Value value{};
    from_json(parseBoundedJson(text, limits), value);
    return value;
}

}  // namespace velmora
