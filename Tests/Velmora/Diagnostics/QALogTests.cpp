// SPDX-License-Identifier: MIT
#include "Velmora/Diagnostics/QALog.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>
#include <vector>

#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Linux/SerialWorkerQueue.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora {
namespace {

using nlohmann::json;
using testing::readFile;
using testing::TemporaryFolder;

QALog::Configuration configured(const std::map<std::string, std::string>& environment,
                                const std::optional<std::filesystem::path>& dataFolder) {
    return QALog::Configuration::fromEnvironment(
        [&](const char* name) {
            const auto found = environment.find(name);
            return found != environment.end() ? std::optional(found->second) : std::nullopt;
        },
        dataFolder);
}

std::vector<std::string> lines(const std::filesystem::path& path) {
    std::vector<std::string> all;
    std::istringstream stream(readFile(path));
    for (std::string line; std::getline(stream, line);) {
        all.push_back(line);
    }
    return all;
}

struct QALogTest : ::testing::Test {
    /// Writes through a log of its own, which is gone, and so has written, afterwards.
    template <typename Body>
    void withLog(const QALog::Configuration& configuration, const Body& body) {
        QALog log(configuration, clock, [this](const std::string& label) {
            labels.push_back(label);
            return std::make_unique<SerialWorkerQueue>(label);
        });
        body(log);
    }

    TemporaryFolder folder;
    ManualClock clock{1000, 1'700'000'000.25};
    std::vector<std::string> labels;
};

LookupResult result() {
    LookupResult found;
    found.entry = DictionaryEntry("知道", "知道", "zhi1 dao4", {});
    found.matchedText = "知道";
    return found;
}

TEST(QALogConfiguration, IsOnForTheValueOneOnly) {
    EXPECT_TRUE(configured({{"VELMORA_QA_LOG", "1"}}, "/d").isEnabled);
    for (const char* value : {"0", "true", "yes", "", " 1", "11"}) {
        EXPECT_FALSE(configured({{"VELMORA_QA_LOG", value}}, "/d").isEnabled) << value;
    }
    EXPECT_FALSE(configured({}, "/d").isEnabled);
}

TEST(QALogConfiguration, ChoosesThePath) {
    EXPECT_EQ(configured({{"VELMORA_QA_LOG_PATH", "a b/c.log"}}, "/d").path, "a b/c.log");
    EXPECT_EQ(configured({{"VELMORA_QA_LOG_PATH", ""}}, "/d").path, "/d/Velmora/qa-log.jsonl");
    EXPECT_EQ(configured({}, "/d").path, "/d/Velmora/qa-log.jsonl");
    EXPECT_EQ(configured({}, std::nullopt).path,
              std::filesystem::temp_directory_path() / "velmora-qa-log.jsonl");
}

TEST_F(QALogTest, SwitchedOffItMakesNothing) {
    withLog({false, folder / "new/log"}, [](QALog& log) {
        log.record({.event = "lookup"});
        EXPECT_FALSE(log.isEnabled());
    });
    EXPECT_TRUE(labels.empty());
    EXPECT_FALSE(std::filesystem::exists(folder / "new"));
}

TEST_F(QALogTest, NoFileBeforeTheFirstRecord) {
    withLog({true, folder / "new/log"}, [](QALog&) {});
    EXPECT_EQ(labels, (std::vector<std::string>{"com.velmora.qa-log"}));
    EXPECT_FALSE(std::filesystem::exists(folder / "new"));
}

TEST_F(QALogTest, MakesTheFolderAndAFileForItsOwnerOnly) {
    withLog({true, folder / "new/deep/log"}, [](QALog& log) { log.record({.event = "lookup"}); });
    EXPECT_EQ(lines(folder / "new/deep/log").size(), 1U);
    struct stat status {};
    ASSERT_EQ(::stat((folder / "new/deep/log").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(QALogTest, ARecordOfNothingHoldsNulls) {
    withLog({true, folder / "log"}, [](QALog& log) {
        log.record({.event = "no_text", .cursorPoint = {10, 20.5}});
    });
    EXPECT_EQ(readFile(folder / "log"),
              "{\"anchorRect\":null,\"cursorPoint\":{\"x\":10.0,\"y\":20.5},\"event\":\"no_text\","
              "\"match\":null,\"probe\":null,\"reason\":null,\"results\":[],\"schemaVersion\":1,"
              "\"ts\":1700000000.25}\n");
}

TEST_F(QALogTest, AFullRecord) {
    TextProbe probe;
    probe.text = "我知道";
    probe.hoveredCharacterOffset = 1;
    probe.source = TextProbe::Source::selectedText;
    const LookupResult found = result();
    const std::vector<LookupResult> all{found, found};
    withLog({true, folder / "log"}, [&](QALog& log) {
        log.record({.event = "lookup",
                    .cursorPoint = {1, 2},
                    .probe = &probe,
                    .match = &found,
                    .results = all,
                    .anchorRect = Rect{1, 2, 3, 4},
                    .mode = "pinyin"});
    });
    const json entry{{"matchedWord", "知道"},
                     {"entrySimplified", "知道"},
                     {"pinyin", "zhī dào"},
                     {"mode", "pinyin"}};
    const json expected{
        {"schemaVersion", 1},
        {"ts", 1700000000.25},
        {"event", "lookup"},
        {"cursorPoint", {{"x", 1.0}, {"y", 2.0}}},
        {"probe", {{"text", "我知道"}, {"hoveredCharacterOffset", 1}, {"source", "selectedText"}}},
        {"match", entry},
        {"results", {entry, entry}},
        {"anchorRect", {{"x", 1.0}, {"y", 2.0}, {"width", 3.0}, {"height", 4.0}}},
        {"reason", nullptr}};
    EXPECT_EQ(json::parse(readFile(folder / "log")), expected);
}

TEST_F(QALogTest, WithoutAModeTheEntryHoldsNull) {
    const LookupResult found = result();
    withLog({true, folder / "log"},
            [&](QALog& log) { log.record({.event = "lookup", .match = &found, .reason = "why"}); });
    const json record = json::parse(readFile(folder / "log"));
    EXPECT_TRUE(record["match"]["mode"].is_null());
    EXPECT_EQ(record["reason"], "why");
}

TEST_F(QALogTest, AppendsAcrossRunsInOrder) {
    for (const char* event : {"first", "second"}) {
        withLog({true, folder / "log"}, [&](QALog& log) {
            log.record({.event = event});
            log.record({.event = "again"});
        });
    }
    const auto all = lines(folder / "log");
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(json::parse(all[0])["event"], "first");
    EXPECT_EQ(json::parse(all[2])["event"], "second");
}

TEST_F(QALogTest, RecordsOfManyThreadsStayWhole) {
    withLog({true, folder / "log"}, [](QALog& log) {
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&log] {
                for (int i = 0; i < 100; ++i) {
                    log.record({.event = "lookup"});
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    });
    const auto all = lines(folder / "log");
    ASSERT_EQ(all.size(), 400U);
    for (const std::string& line : all) {
        EXPECT_TRUE(json::accept(line));
    }
}

TEST_F(QALogTest, DropsWhatHoldsNoNumbers) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    withLog({true, folder / "log"}, [&](QALog& log) {
        log.record({.event = "bad", .cursorPoint = {nan, 0}});
        log.record({.event = "bad", .cursorPoint = {0, -infinity}});
        log.record({.event = "bad", .anchorRect = Rect{0, 0, infinity, 1}});
        log.record({.event = "bad", .anchorRect = Rect{0, nan, 1, 1}});
        log.record({.event = "good"});
    });
    const auto all = lines(folder / "log");
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(json::parse(all[0])["event"], "good");
}

TEST_F(QALogTest, DropsWhatIsNotUtf8) {
    TextProbe probe;
    probe.text = "\xff\xfe";
    withLog({true, folder / "log"}, [&](QALog& log) {
        log.record({.event = "bad", .probe = &probe});
        log.record({.event = "good"});
    });
    EXPECT_EQ(lines(folder / "log").size(), 1U);
}

TEST_F(QALogTest, TextsStayOnTheirLine) {
    TextProbe probe;
    probe.text = "一\n二\u2028三\"\\";
    withLog({true, folder / "log"}, [&](QALog& log) { log.record({.probe = &probe}); });
    const auto all = lines(folder / "log");
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(json::parse(all[0])["probe"]["text"], probe.text);
}

TEST_F(QALogTest, SwallowsEveryFailure) {
    testing::writeFile(folder / "file", "in the way");
    for (const std::filesystem::path& path :
         {std::filesystem::path("/dev/full"), folder / "file/log", folder.path(),
          std::filesystem::path("/proc/velmora/log")}) {
        withLog({true, path}, [](QALog& log) {
            log.record({.event = "lookup"});
            log.record({.event = "lookup"});
        });
    }
    EXPECT_EQ(readFile(folder / "file"), "in the way");
}

TEST_F(QALogTest, APipeThatNobodyReadsHoldsNothingUp) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    withLog({true, folder / "pipe"}, [](QALog& log) { log.record({.event = "lookup"}); });
}

}  // namespace
}  // namespace velmora
