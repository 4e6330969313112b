// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/JsonLines.h"

#include <gtest/gtest.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>

#include "VelmoraCore/SeedDictionary.h"

namespace velmora {
namespace {

class JsonLinesTest : public ::testing::Test {
  protected:
    nlohmann::json answerTo(std::string_view line) const {
        const std::string text = answerJsonLine(line, engine_);
        EXPECT_EQ(text.find('\n'), std::string::npos);
        return nlohmann::json::parse(text);
    }

    std::string errorOf(std::string_view line) const {
        const nlohmann::json answer = answerTo(line);
        return answer.is_object() && answer.contains("error") ? answer["error"] : "no error";
    }

    LookupEngine engine_{std::make_shared<const DictionaryStore>(SeedDictionary::entries())};
};

TEST_F(JsonLinesTest, AnswersWithTheWord) {
    EXPECT_EQ(answerTo(R"({"text":"我学习中文","offset":2})")["matchedText"], "学习");
    EXPECT_EQ(answerTo(R"({"text":"学习"})")["range"]["end"], 2);
    EXPECT_TRUE(answerTo(R"({"text":"学习","offset":2})").is_null());
    EXPECT_TRUE(answerTo(R"({"text":"学习","offset":-1})").is_null());
}

TEST_F(JsonLinesTest, PassesOverOtherKeys) {
    EXPECT_EQ(answerTo(R"({"id":7,"text":"学习"})")["matchedText"], "学习");
}

TEST_F(JsonLinesTest, SaysWhatIsWrong) {
    EXPECT_EQ(errorOf(""), "the line is empty");
    EXPECT_EQ(errorOf(" \t\r"), "the line is empty");
    EXPECT_EQ(errorOf("[]"), "the line must be an object with text and offset");
    EXPECT_EQ(errorOf("{}"), "text must be a string");
    EXPECT_EQ(errorOf(R"({"text":1})"), "text must be a string");
    EXPECT_EQ(errorOf(R"({"text":"学","offset":3.7})"), "offset must be an integer");
    EXPECT_EQ(errorOf(R"({"text":"学","offset":true})"), "offset must be an integer");
    EXPECT_EQ(errorOf(R"({"text":"学","offset":"1"})"), "offset must be an integer");
    EXPECT_EQ(errorOf(R"({"text":"学","offset":18446744073709551615})"), "offset is out of range");
    EXPECT_NE(errorOf("{").find("JSON"), std::string::npos);
    EXPECT_NE(errorOf(std::string(17, '[') + std::string(17, ']')).find("deeper"),
              std::string::npos);
}

TEST_F(JsonLinesTest, StopsWhenTheOutputIsGone) {
    std::istringstream in("{\"text\":\"学习\"}\n{\"text\":\"学习\"}\n");
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    CommandStreams streams{.in = in, .out = out, .err = out, .style = {}};
    answerJsonLines(engine_, streams);
    std::string rest;
    EXPECT_TRUE(std::getline(in, rest));
}

}  // namespace
}  // namespace velmora
