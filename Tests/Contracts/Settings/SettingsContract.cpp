// SPDX-License-Identifier: MIT
// What every store of settings promises.
#include <gtest/gtest.h>

#include <memory>

#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Linux/SettingsFile.h"
#include "Velmora/Platform/Recorded/MemorySettings.h"

namespace velmora {
namespace {

struct InMemory {
    MemorySettings settings;
};

struct InFile {
    testing::TemporaryFolder folder;
    SettingsFile settings{folder / "Velmora/Velmora.conf"};
};

struct WithoutPlace {
    SettingsFile settings{std::nullopt};
};

template <typename Backend>
class SettingsContract : public ::testing::Test {
  protected:
    Settings& settings() { return backend_.settings; }

  private:
    Backend backend_;
};

using Backends = ::testing::Types<InMemory, InFile, WithoutPlace>;
TYPED_TEST_SUITE(SettingsContract, Backends);

TYPED_TEST(SettingsContract, AnswersNothingForAbsentKeys) {
    EXPECT_EQ(this->settings().boolean("hoverLookupEnabled"), std::nullopt);
    EXPECT_EQ(this->settings().number("popoverFontScale"), std::nullopt);
    EXPECT_EQ(this->settings().text("analyticsAnonymousInstallID"), std::nullopt);
}

TYPED_TEST(SettingsContract, GivesBackWhatWasSet) {
    this->settings().setBoolean("on", true);
    this->settings().setBoolean("off", false);
    this->settings().setNumber("scale", 1.05);
    this->settings().setText("name", "知道 \\ two\nlines");
    EXPECT_EQ(this->settings().boolean("on"), true);
    EXPECT_EQ(this->settings().boolean("off"), false);
    EXPECT_EQ(this->settings().number("scale"), 1.05);
    EXPECT_EQ(this->settings().text("name"), "知道 \\ two\nlines");
}

TYPED_TEST(SettingsContract, TheLastSetCounts) {
    this->settings().setNumber("scale", 1.5);
    this->settings().setNumber("scale", 0.7);
    EXPECT_EQ(this->settings().number("scale"), 0.7);
}

TYPED_TEST(SettingsContract, OnlyTrueAndOneAreTrue) {
    for (const char* text : {"true", "1"}) {
        this->settings().setText("key", text);
        EXPECT_EQ(this->settings().boolean("key"), true) << text;
    }
    for (const char* text : {"false", "0", "TRUE", "yes", "on", "2", ""}) {
        this->settings().setText("key", text);
        EXPECT_EQ(this->settings().boolean("key"), false) << text;
    }
}

TYPED_TEST(SettingsContract, WhatIsNoNumberIsZero) {
    for (const char* text : {"", "large", "nan", "inf", "-inf", "1.0x", "1,5", "1e999"}) {
        this->settings().setText("key", text);
        EXPECT_EQ(this->settings().number("key"), 0.0) << text;
    }
    this->settings().setText("key", "1e9");
    EXPECT_EQ(this->settings().number("key"), 1e9);
    this->settings().setText("key", "-0.5");
    EXPECT_EQ(this->settings().number("key"), -0.5);
}

}  // namespace
}  // namespace velmora
