// SPDX-License-Identifier: MIT
#include "VelmoraCore/ModelCoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VelmoraCore/SeedDictionary.h"

namespace velmora {
namespace {

using nlohmann::json;

const char* const definitionText =
    R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","partOfSpeech":"n.","glosses":["a","b"]})";

/// The definition above with one member replaced, or removed where `value` is discarded.
std::string changed(const char* key, const json& value) {
    json object = json::parse(definitionText);
    object[key] = value;
    return object.dump();
}

std::string without(const json& value, const char* key) {
    json object = value;
    object.erase(key);
    return object.dump();
}

TEST(ModelCoding, an_entry_survives_the_round_trip_with_its_identifiers) {
    for (const DictionaryEntry& entry : SeedDictionary::entries()) {
        EXPECT_EQ(decodeJson<DictionaryEntry>(encodeJson(entry)), entry);
    }
}

TEST(ModelCoding, writes_the_keys_in_the_order_of_the_fields) {
    DictionaryEntry entry("学", "學", "xue2", {});
    entry.id = *Uuid::parse("0f8fad5b-d9cb-469f-a165-70867728950e");
    EXPECT_EQ(
        encodeJson(entry),
        R"({"id":"0F8FAD5B-D9CB-469F-A165-70867728950E","simplified":"学","traditional":"學",)"
        R"("pinyinNumbered":"xue2","pinyinMarked":"xué",)"
        R"("syllables":[{"numbered":"xue2","marked":"xué","tone":2}],)"
        R"("definitions":[],"examples":[]})");
    entry.hskLevel = 3;
    EXPECT_EQ(json::parse(encodeJson(entry)).at("hskLevel"), 3);
}

TEST(ModelCoding, an_absent_part_of_speech_is_left_out) {
    EntryDefinition definition;
    definition.glosses = {"x"};
    EXPECT_FALSE(json::parse(encodeJson(definition)).contains("partOfSpeech"));
    definition.partOfSpeech = "v.";
    EXPECT_EQ(json::parse(encodeJson(definition)).at("partOfSpeech"), "v.");
}

TEST(ModelCoding, optional_members_may_be_missing_or_null) {
    EXPECT_EQ(decodeJson<EntryDefinition>(definitionText).partOfSpeech, "n.");
    EXPECT_FALSE(decodeJson<EntryDefinition>(changed("partOfSpeech", nullptr)).partOfSpeech);
    EXPECT_FALSE(decodeJson<EntryDefinition>(without(json::parse(definitionText), "partOfSpeech"))
                     .partOfSpeech);
    json entry = json::parse(encodeJson(SeedDictionary::entries()[0]));
    EXPECT_EQ(decodeJson<DictionaryEntry>(entry.dump()).hskLevel, 1);
    EXPECT_FALSE(decodeJson<DictionaryEntry>(without(entry, "hskLevel")).hskLevel);
    entry["hskLevel"] = nullptr;
    EXPECT_FALSE(decodeJson<DictionaryEntry>(entry.dump()).hskLevel);
}

TEST(ModelCoding, every_other_member_is_required) {
    const json entry = json::parse(encodeJson(SeedDictionary::entries()[0]));
    for (const char* key : {"id", "simplified", "traditional", "pinyinNumbered", "pinyinMarked",
                            "syllables", "definitions", "examples"}) {
        EXPECT_THROW(decodeJson<DictionaryEntry>(without(entry, key)), DecodingError) << key;
        json nulled = entry;
        nulled[key] = nullptr;
        EXPECT_THROW(decodeJson<DictionaryEntry>(nulled.dump()), DecodingError) << key;
    }
    for (const char* key : {"numbered", "marked", "tone"}) {
        EXPECT_THROW(decodeJson<PinyinSyllable>(without(entry["syllables"][0], key)), DecodingError)
            << key;
    }
    for (const char* key : {"id", "hanzi", "pinyin", "english"}) {
        EXPECT_THROW(decodeJson<ExampleSentence>(without(entry["examples"][0], key)), DecodingError)
            << key;
    }
    for (const char* key : {"id", "glosses"}) {
        EXPECT_THROW(decodeJson<EntryDefinition>(without(entry["definitions"][0], key)),
                     DecodingError)
            << key;
    }
}

TEST(ModelCoding, the_kind_of_every_value_is_checked) {
    EXPECT_THROW(decodeJson<EntryDefinition>(changed("partOfSpeech", 1)), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>(changed("glosses", "a")), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>(changed("glosses", json::object())), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>(changed("glosses", json::array({1}))), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>(changed("id", 5)), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>(changed("id", "5")), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>("[]"), DecodingError);
    EXPECT_THROW(decodeJson<EntryDefinition>("null"), DecodingError);
    for (const char* tone : {"3.7", "3.0", "true", "\"3\"", "5", "-1", "99999999999999999999",
                             "18446744073709551615", "1e400"}) {
        const std::string text =
            R"({"numbered":"a","marked":"a","tone":)" + std::string(tone) + "}";
        EXPECT_THROW(decodeJson<PinyinSyllable>(text), DecodingError) << tone;
    }
}

TEST(ModelCoding, integers_keep_their_whole_range) {
    json entry = json::parse(encodeJson(SeedDictionary::entries()[0]));
    entry["hskLevel"] = 9223372036854775807LL;
    EXPECT_EQ(decodeJson<DictionaryEntry>(entry.dump()).hskLevel, 9223372036854775807LL);
    entry["hskLevel"] = -5;
    EXPECT_EQ(decodeJson<DictionaryEntry>(entry.dump()).hskLevel, -5);
    entry["hskLevel"] = 9223372036854775808ULL;
    EXPECT_THROW(decodeJson<DictionaryEntry>(entry.dump()), DecodingError);
}

TEST(ModelCoding, stored_readings_are_not_computed_again) {
    json entry = json::parse(encodeJson(SeedDictionary::entries()[0]));
    entry["pinyinMarked"] = "stored";
    entry["syllables"] = json::array();
    const auto decoded = decodeJson<DictionaryEntry>(entry.dump());
    EXPECT_EQ(decoded.pinyinMarked, "stored");
    EXPECT_TRUE(decoded.syllables.empty());
    EXPECT_EQ(decoded.pinyinNumbered, "xue2 xi2");
}

TEST(ModelCoding, tones_and_scripts_are_single_values) {
    EXPECT_EQ(encodeJson(PinyinTone::third), "3");
    EXPECT_EQ(decodeJson<PinyinTone>("0"), PinyinTone::neutral);
    EXPECT_THROW(decodeJson<PinyinTone>("5"), DecodingError);
    EXPECT_EQ(encodeJson(ChineseScript::traditional), "\"traditional\"");
    EXPECT_EQ(decodeJson<ChineseScript>("\"simplified\""), ChineseScript::simplified);
    EXPECT_THROW(decodeJson<ChineseScript>("\"Simplified\""), DecodingError);
    EXPECT_THROW(decodeJson<ChineseScript>("0"), DecodingError);
}

TEST(ModelCoding, identifiers_are_written_in_upper_case_and_read_in_either) {
    const auto id = decodeJson<Uuid>("\"0f8fad5b-d9cb-469F-A165-70867728950e\"");
    EXPECT_EQ(encodeJson(id), "\"0F8FAD5B-D9CB-469F-A165-70867728950E\"");
}

TEST(ModelCoding, unknown_members_are_passed_over) {
    EXPECT_EQ(decodeJson<EntryDefinition>(changed("more", 1)),
              decodeJson<EntryDefinition>(definitionText));
}

TEST(ModelCoding, what_is_no_json_is_one_clear_error) {
    for (const char* text : {"", " ", "{", "{\"id\":}", "nul", "\"\\ud800\"", "\xFF", "\"\xFF\"",
                             "{} {}", "\"\x01\""}) {
        EXPECT_THROW(decodeJson<EntryDefinition>(text), DecodingError) << text;
    }
    try {
        decodeJson<EntryDefinition>(changed("glosses", json::array({"a", 1})));
        FAIL();
    } catch (const DecodingError& error) {
        EXPECT_STREQ(error.what(), "key \"glosses\": not a string");
    }
}

TEST(ModelCoding, length_and_depth_are_bounded) {
    EXPECT_NO_THROW(parseBoundedJson(std::string(16, '[') + std::string(16, ']')));
    EXPECT_THROW(parseBoundedJson(std::string(17, '[') + std::string(17, ']')), DecodingError);
    EXPECT_THROW(parseBoundedJson(std::string(1000000, '[')), DecodingError);
    EXPECT_THROW(parseBoundedJson("{\"a\":" + std::string(16, '[') + std::string(16, ']') + "}"),
                 DecodingError);
    EXPECT_NO_THROW(
        parseBoundedJson("\"" + std::string(40, '[') + "\\\"" + std::string(40, '{') + "\""));
    std::string wide = "[0";
    for (int count = 0; count < 40; ++count) {
        wide += ",{},[]";
    }
    EXPECT_NO_THROW(parseBoundedJson(wide + "]"));
    EXPECT_NO_THROW(parseBoundedJson("[1]", {3, 1}));
    EXPECT_THROW(parseBoundedJson("[12]", {3, 1}), DecodingError);
}

TEST(ModelCoding, errors_say_what_is_wrong) {
    const auto complaint = [](const std::string& text) -> std::string {
        try {
            decodeJson<EntryDefinition>(text);
        } catch (const DecodingError& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(complaint("[]"), "not an object where one is expected");
    EXPECT_EQ(complaint("{}"), "missing key \"id\"");
    EXPECT_EQ(complaint("}}{"), "not valid JSON at byte 1");
    EXPECT_EQ(complaint("[1e400]"), "not valid JSON: a number is out of range");
    EXPECT_EQ(complaint(std::string(17, '[')), "nested deeper than 16 levels");
}

TEST(ModelCoding, decoding_replaces_what_the_value_held) {
    auto definition = decodeJson<EntryDefinition>(definitionText);
    from_json(json::parse(without(json::parse(definitionText), "partOfSpeech")), definition);
    EXPECT_FALSE(definition.partOfSpeech);
    EXPECT_EQ(definition.glosses, (std::vector<std::string>{"a", "b"}));
}

TEST(ModelCoding, text_that_is_not_utf8_is_written_with_replacement_characters) {
    EntryDefinition definition;
    definition.glosses = {"a\xFF"};
    EXPECT_EQ(decodeJson<EntryDefinition>(encodeJson(definition)).glosses[0], "a\xEF\xBF\xBD");
}

}  // namespace
}  // namespace velmora
