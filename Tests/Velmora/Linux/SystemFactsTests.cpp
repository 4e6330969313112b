// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>

#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Linux/OsRelease.h"
#include "Velmora/Platform/Linux/XdgPaths.h"

namespace velmora {
namespace {

TEST(OsRelease, TellsThePrettyName) {
    EXPECT_EQ(prettyNameFromOsRelease("NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n"),
              "Debian GNU/Linux 12 (bookworm)");
    EXPECT_EQ(prettyNameFromOsRelease("PRETTY_NAME='A \\b'"), "A \\b");
    EXPECT_EQ(prettyNameFromOsRelease("PRETTY_NAME=\"say \\\"hi\\\"\"\r\n"), "say \"hi\"");
    EXPECT_EQ(prettyNameFromOsRelease("PRETTY_NAME=Plain"), "Plain");
    EXPECT_EQ(prettyNameFromOsRelease("#PRETTY_NAME=No\nX_PRETTY_NAME=No"), "");
    EXPECT_EQ(prettyNameFromOsRelease("PRETTY_NAME=\""), "\"");
    EXPECT_EQ(prettyNameFromOsRelease(""), "");
}

TEST(OsRelease, TakesTheFirstFileThatHasOne) {
    const testing::TemporaryFolder folder;
    testing::writeFile(folder / "a", "NAME=none\n");
    testing::writeFile(folder / "b", "PRETTY_NAME=B\n");
    EXPECT_EQ(operatingSystemVersion({folder / "missing", folder / "a", folder / "b"}), "B");
    EXPECT_EQ(operatingSystemVersion({folder / "missing"}), "Linux");
}

TEST(XdgPaths, ComeFromTheEnvironmentOrTheHomeFolder) {
    ::setenv("HOME", "/home/somebody", 1);
    ::unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(xdg::dataHome(), "/home/somebody/.local/share");
    ::setenv("XDG_DATA_HOME", "", 1);
    EXPECT_EQ(xdg::dataHome(), "/home/somebody/.local/share");
    ::setenv("XDG_DATA_HOME", "../elsewhere", 1);
    EXPECT_EQ(xdg::dataHome(), "/home/somebody/.local/share");
    ::setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(xdg::dataHome(), "/data");
    ::unsetenv("XDG_CACHE_HOME");
    EXPECT_EQ(xdg::cacheHome(), "/home/somebody/.cache");
    ::unsetenv("HOME");
    EXPECT_TRUE(xdg::cacheHome().has_value());
}

}  // namespace
}  // namespace velmora
