// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/SettingsFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora {
namespace {

using testing::readFile;
using testing::TemporaryFolder;
using testing::writeFile;

TEST(SettingsFile, WritesGroupGeneral) {
    const TemporaryFolder folder;
    SettingsFile settings(folder / "Velmora/Velmora.conf");
    EXPECT_FALSE(std::filesystem::exists(folder / "Velmora"));
    settings.setBoolean("hoverLookupEnabled", true);
    settings.setNumber("popoverFontScale", 1.25);
    EXPECT_EQ(readFile(folder / "Velmora/Velmora.conf"),
              "[General]\nhoverLookupEnabled=true\npopoverFontScale=1.25\n");
}

TEST(SettingsFile, HoldsAcrossRuns) {
    const TemporaryFolder folder;
    SettingsFile(folder / "a.conf").setBoolean("onboardingCompleted", true);
    EXPECT_EQ(SettingsFile(folder / "a.conf").boolean("onboardingCompleted"), true);
}

TEST(SettingsFile, KeepsWhatItDoesNotKnow) {
    const TemporaryFolder folder;
    writeFile(folder / "a.conf",
              "; mine\nstray\n[Windows]\nVelmora Settings=1,2,3\n\n[General]\nfuture=x\n# note\n"
              "hoverLookupEnabled = 0 \n[Other]\nk=v\n");
    SettingsFile settings(folder / "a.conf");
    EXPECT_EQ(settings.boolean("hoverLookupEnabled"), false);
    EXPECT_EQ(settings.text("Windows/Velmora Settings"), "1,2,3");
    settings.setBoolean("hoverLookupEnabled", true);
    settings.setBoolean("onboardingCompleted", true);
    EXPECT_EQ(readFile(folder / "a.conf"),
              "; mine\nstray\n[Windows]\nVelmora Settings=1,2,3\n\n[General]\nfuture=x\n# note\n"
              "hoverLookupEnabled=true\nonboardingCompleted=true\n[Other]\nk=v\n");
}

TEST(SettingsFile, OfTwoEqualKeysTheLastCounts) {
    const TemporaryFolder folder;
    writeFile(folder / "a.conf", "[General]\nk=1\n[X]\nk=9\n[General]\nk=2\n");
    SettingsFile settings(folder / "a.conf");
    EXPECT_EQ(settings.text("k"), "2");
    settings.setText("k", "3");
    EXPECT_EQ(SettingsFile(folder / "a.conf").text("k"), "3");
}

TEST(SettingsFile, IsReadAtTheStartOnly) {
    const TemporaryFolder folder;
    SettingsFile settings(folder / "a.conf");
    writeFile(folder / "a.conf", "[General]\nk=1\n");
    EXPECT_EQ(settings.text("k"), std::nullopt);
}

TEST(SettingsFile, AFileFromTheFutureIsReadAndKept) {
    const TemporaryFolder folder;
    const std::string future =
        "[General]\nversion=99\nhoverLookupEnabled=true\npopoverFontScale=1.2\n"
        "theme={\"name\": \"dusk\"}\nhoverLookup\\2=@Variant(\\0\\0)\n[Layers]\n1\\on=maybe\n";
    writeFile(folder / "a.conf", future);
    SettingsFile settings(folder / "a.conf");
    EXPECT_EQ(settings.boolean("hoverLookupEnabled"), true);
    EXPECT_EQ(settings.number("popoverFontScale"), 1.2);
    settings.setNumber("popoverFontScale", 1.4);
    std::string expected = future;
    expected.replace(expected.find("1.2"), 3, "1.4");
    EXPECT_EQ(readFile(folder / "a.conf"), expected);
}

TEST(SettingsFile, ANumberThatIsNoneReadsAsZero) {
    const TemporaryFolder folder;
    for (const auto& [text, value] : {std::pair<const char*, double>{"0", 0},
                                      {"-1", -1},
                                      {"nan", 0},
                                      {"-nan", 0},
                                      {"inf", 0},
                                      {"large", 0},
                                      {"", 0},
                                      {"1,5", 0},
                                      {"1.5x", 0},
                                      {"1e999", 0},
                                      {"1e9", 1e9}}) {
        writeFile(folder / "a.conf", std::string("[General]\npopoverFontScale=") + text + "\n");
        EXPECT_EQ(SettingsFile(folder / "a.conf").number("popoverFontScale"), value) << text;
    }
}

TEST(SettingsFile, WhatSetsCannotReachIsLeftAlone) {
    // Nobody, not even the administrator, replaces a file here.
    const std::string before = readFile("/proc/version");
    SettingsFile settings("/proc/version");
    settings.setBoolean("hoverLookupEnabled", true);
    EXPECT_EQ(settings.boolean("hoverLookupEnabled"), true);
    EXPECT_EQ(readFile("/proc/version"), before);
}

TEST(SettingsFile, SurvivesRubbish) {
    const TemporaryFolder folder;
    writeFile(folder / "a.conf", std::string("\0\xff\xfe[[[=\n=\n[General\nk=1\n]", 24));
    SettingsFile settings(folder / "a.conf");
    EXPECT_EQ(settings.text("k"), std::nullopt);
    settings.setText("k", "2");
    EXPECT_EQ(SettingsFile(folder / "a.conf").text("k"), "2");
}

TEST(SettingsFile, LeavesAHugeFileAlone) {
    const TemporaryFolder folder;
    const std::string huge = "[General]\nk=1\n" + std::string(2 << 20, '#') + "\n";
    writeFile(folder / "a.conf", huge);
    SettingsFile settings(folder / "a.conf");
    EXPECT_EQ(settings.text("k"), std::nullopt);
    settings.setText("k", "2");
    EXPECT_EQ(settings.text("k"), "2");
    EXPECT_EQ(readFile(folder / "a.conf"), huge);
}

TEST(SettingsFile, WhereNothingCanBeStoredSetsHoldForTheProcess) {
    const TemporaryFolder folder;
    writeFile(folder / "file", "in the way");
    SettingsFile settings(folder / "file" / "Velmora" / "Velmora.conf");
    settings.setBoolean("k", true);
    EXPECT_EQ(settings.boolean("k"), true);
    // A folder where the file should be.
    std::filesystem::create_directories(folder / "b.conf");
    SettingsFile another(folder / "b.conf");
    another.setBoolean("k", true);
    EXPECT_EQ(another.boolean("k"), true);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "b.conf"));
}

TEST(SettingsFile, FollowsALinkAndKeepsTheMode) {
    const TemporaryFolder folder;
    writeFile(folder / "real/a.conf", "[General]\nk=1\n");
    ::chmod((folder / "real/a.conf").c_str(), 0640);
    std::filesystem::create_symlink(folder / "real/a.conf", folder / "a.conf");
    SettingsFile settings(folder / "a.conf");
    settings.setText("k", "2");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "a.conf"));
    EXPECT_EQ(readFile(folder / "real/a.conf"), "[General]\nk=2\n");
    struct stat status {};
    ::stat((folder / "real/a.conf").c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(SettingsFile, LeavesNoTemporaryFilesBehind) {
    const TemporaryFolder folder;
    SettingsFile settings(folder / "Velmora/Velmora.conf");
    for (int i = 0; i < 20; ++i) {
        settings.setNumber("popoverFontScale", 0.7 + i * 0.05);
    }
    const std::filesystem::directory_iterator files(folder / "Velmora");
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(SettingsFile, StandsInTheUsersFolderForConfiguration) {
    const TemporaryFolder folder;
    ::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    EXPECT_EQ(SettingsFile::standardPath(), folder / "Velmora/Velmora.conf");
    ::setenv("XDG_CONFIG_HOME", "relative", 1);
    ::setenv("HOME", "/home/somebody", 1);
    EXPECT_EQ(SettingsFile::standardPath(), "/home/somebody/.config/Velmora/Velmora.conf");
}

}  // namespace
}  // namespace velmora
