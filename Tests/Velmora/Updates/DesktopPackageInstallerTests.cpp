// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Updates/DesktopPackageInstaller.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Tests/Support/EventLoop.h"
#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"

namespace velmora::test {
namespace {

using std::filesystem::perms;

class DesktopPackageInstallerTests : public ::testing::Test {
  protected:
    DesktopPackageInstallerTests() {
        testing::writeFile(opener,
                           "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.draft\"\n"
                           "mv \"$0.draft\" \"$0.opened\"\n");
        std::filesystem::permissions(opener, perms::owner_all);
    }

    std::string install(const std::string& package, const std::string& name) {
        return DesktopPackageInstaller("/opt/velmora/velmora", cache, opener)
            .install(package, name);
    }
    bool isOpened(const std::string& name) const {
        return testing::waitUntil(
            [&] { return testing::readFile(opener + ".opened") == cache + "/" + name; });
    }
    static bool isOwned(const std::string& executable) {
        return DesktopPackageInstaller(executable, "/nonexistent").isOwnedByPackageManager();
    }

    testing::TemporaryFolder folder;
    std::string cache = folder / "cache/Velmora/updates";
    std::string opener = folder / "opener";
};

TEST_F(DesktopPackageInstallerTests, OpensThePackageThatItStored) {
    const std::string package("\x7f\0package\n", 10);
    EXPECT_EQ(install(package, "velmora-2.0.deb"), "");
    EXPECT_TRUE(isOpened("velmora-2.0.deb"));
    EXPECT_EQ(testing::readFile(cache + "/velmora-2.0.deb"), package);
    EXPECT_EQ(std::filesystem::status(cache + "/velmora-2.0.deb").permissions(),
              perms::owner_read | perms::owner_write);
}

TEST_F(DesktopPackageInstallerTests, KeepsTheNewestPackageOnly) {
    install("old", "velmora-1.9.deb");
    EXPECT_TRUE(isOpened("velmora-1.9.deb"));
    install("new", "velmora-2.0.deb");
    EXPECT_FALSE(std::filesystem::exists(cache + "/velmora-1.9.deb"));
    EXPECT_EQ(testing::readFile(cache + "/velmora-2.0.deb"), "new");
    EXPECT_TRUE(isOpened("velmora-2.0.deb"));
}

TEST_F(DesktopPackageInstallerTests, SaysThatNoInstallerCanBeStarted) {
    opener = folder / "no-such-command";
    const std::string outcome = install("package", "velmora-2.0.deb");
    EXPECT_EQ(outcome, "The package is stored as " + cache +
                           "/velmora-2.0.deb, but no installer could be started (" + opener +
                           " is missing).");
}

TEST_F(DesktopPackageInstallerTests, SaysThatNothingCanBeStored) {
    testing::writeFile(folder / "cache", "a file");
    EXPECT_EQ(install("package", "velmora-2.0.deb"),
              "The package could not be stored in " + cache + ".");
    cache.clear();
    EXPECT_EQ(install("package", "velmora-2.0.deb"), "The package could not be stored in .");
}

TEST_F(DesktopPackageInstallerTests, SystemFoldersBelongToPackageManagers) {
    EXPECT_TRUE(isOwned("/usr/bin/env"));
    EXPECT_FALSE(isOwned(opener));
    // A link from where programs are looked for does not change whose the program is.
    const std::string link = folder / "env";
    std::filesystem::create_symlink("/usr/bin/env", link);
    EXPECT_TRUE(isOwned(link));
}

}  // namespace
}  // namespace velmora::test
