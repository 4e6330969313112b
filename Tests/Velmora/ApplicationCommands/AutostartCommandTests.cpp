// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/AutostartCommand.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Velmora/ApplicationCommands/CommandRun.h"
#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {
namespace {

class AutostartCommandTest : public ::testing::Test {
  protected:
    int autostart(const std::vector<std::string>& arguments) {
        run.out.str("");
        return runAutostartCommand(arguments, configuration, program, run.streams);
    }
    std::string entry() const {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    testing::TemporaryFolder folder;
    std::filesystem::path configuration = std::filesystem::path(folder / "config");
    std::filesystem::path path = configuration / "autostart/com.velmora.Velmora.desktop";
    std::filesystem::path program = "/opt/my tools/velmora";
    CommandRun run;
};

TEST_F(AutostartCommandTest, IsOffAtFirst) {
    EXPECT_EQ(autostart({"status"}), 1);
    EXPECT_EQ(run.out.str(), "off\n");
    EXPECT_EQ(autostart({"off"}), 0);
    EXPECT_FALSE(std::filesystem::exists(configuration));
}

TEST_F(AutostartCommandTest, GoesOnAndOff) {
    EXPECT_EQ(autostart({"on"}), 0);
    EXPECT_EQ(autostart({"status"}), 0);
    EXPECT_EQ(run.out.str(), "on\n");
    EXPECT_NE(entry().find("\nExec=\"/opt/my tools/velmora\"\n"), std::string::npos);
    EXPECT_EQ(autostart({"on"}), 0);
    EXPECT_EQ(autostart({"off"}), 0);
    EXPECT_EQ(autostart({"status"}), 1);
    EXPECT_TRUE(std::filesystem::is_empty(path.parent_path()));
}

TEST_F(AutostartCommandTest, OddPathsAreEscaped) {
    program = R"(/a$b`c"d\e%f)";
    autostart({"on"});
    EXPECT_NE(entry().find(R"(Exec="/a\\$b\\`c\\"d\\\\e%%f")"), std::string::npos) << entry();
    program = "/a\nb";
    EXPECT_THROW(autostart({"on"}), UsageError);
}

TEST_F(AutostartCommandTest, AnEntryThatTheDesktopSwitchedOffIsOff) {
    autostart({"on"});
    std::ofstream(path, std::ios::app) << "Hidden=true\n";
    EXPECT_EQ(autostart({"status"}), 1);
    EXPECT_EQ(autostart({"on"}), 0);
    EXPECT_EQ(autostart({"status"}), 0);
}

TEST_F(AutostartCommandTest, AFolderThatCannotBeWrittenIsToldOf) {
    std::ofstream(folder / "file") << "no folder";
    configuration = std::filesystem::path(folder / "file");
    EXPECT_THROW(autostart({"on"}), UsageError);
    EXPECT_EQ(autostart({"status"}), 1);
}

TEST_F(AutostartCommandTest, TakesOneOfThreeWords) {
    EXPECT_THROW(autostart({}), UsageError);
    EXPECT_THROW(autostart({"maybe"}), UsageError);
    EXPECT_THROW(autostart({"on", "off"}), UsageError);
    EXPECT_THROW(autostart({"--on"}), UsageError);
}

}  // namespace
}  // namespace velmora
