// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/Arguments.h"

#include <gtest/gtest.h>

#include <array>

#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {
namespace {

constexpr std::array<Arguments::Option, 2> known{{{"--flag", false}, {"--value", true}}};

Arguments parse(const std::vector<std::string>& arguments) {
    return {arguments, known};
}

TEST(Arguments, OptionsAndTextsMayBeMixed) {
    const Arguments arguments = parse({"a", "--flag", "b", "--value", "1", "c"});
    EXPECT_TRUE(arguments.has("--flag"));
    EXPECT_EQ(arguments.value("--value"), "1");
    EXPECT_EQ(arguments.texts(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(Arguments, WhatIsNotGivenIsAbsent) {
    const Arguments arguments = parse({});
    EXPECT_FALSE(arguments.has("--flag"));
    EXPECT_EQ(arguments.value("--value"), std::nullopt);
    EXPECT_TRUE(arguments.values("--value").empty());
    EXPECT_EQ(arguments.integer("--value", 5), 5);
}

TEST(Arguments, ValuesMayLookLikeOptions) {
    EXPECT_EQ(parse({"--value", "--flag"}).value("--value"), "--flag");
    EXPECT_EQ(parse({"--value", "--"}).value("--value"), "--");
    EXPECT_EQ(parse({"--value=a=b"}).value("--value"), "a=b");
    EXPECT_EQ(parse({"--value="}).value("--value"), "");
}

TEST(Arguments, RepeatedValuesAreKeptInOrder) {
    const Arguments arguments = parse({"--value", "1", "--value=2"});
    EXPECT_EQ(arguments.values("--value"), (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(arguments.value("--value"), "2");
}

TEST(Arguments, TwoDashesEndTheOptions) {
    const Arguments arguments = parse({"--", "--flag", "--", "-"});
    EXPECT_FALSE(arguments.has("--flag"));
    EXPECT_EQ(arguments.texts(), (std::vector<std::string>{"--flag", "--", "-"}));
}

TEST(Arguments, OneDashIsAText) {
    EXPECT_EQ(parse({"-"}).onlyText("TEXT"), "-");
}

TEST(Arguments, RefusesWhatItDoesNotKnow) {
    EXPECT_THROW(parse({"--other"}), UsageError);
    EXPECT_THROW(parse({"--fla"}), UsageError);
    EXPECT_THROW(parse({"-f"}), UsageError);
    EXPECT_THROW(parse({"--flag=1"}), UsageError);
    EXPECT_THROW(parse({"--value"}), UsageError);
}

TEST(Arguments, ReadsWholeNumbersOnly) {
    EXPECT_EQ(parse({"--value", "-3"}).integer("--value", 0), -3);
    EXPECT_EQ(parse({"--value=9223372036854775807"}).integer("--value", 0), 9223372036854775807LL);
    for (const char* text : {"", " 1", "1 ", "1x", "+1", "1.0", "9223372036854775808", "一"}) {
        EXPECT_THROW(parse({"--value", text}).integer("--value", 0), UsageError) << text;
    }
}

}  // namespace
}  // namespace velmora
