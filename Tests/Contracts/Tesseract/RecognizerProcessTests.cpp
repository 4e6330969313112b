// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Tests/Contracts/Tesseract/Pictures.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"

namespace velmora {
namespace {

using std::chrono::milliseconds;
using Worker = RecognizerState::Worker;

constexpr milliseconds longEnough{60000};

GrayImage someLine() {
    GrayImage line(200, 48, 255);
    for (int x = 40; x < 120; ++x) {
        line.at(x, 24) = 0;
        line.at(x, 25) = 0;
    }
    return line;
}

/// Part of the simplified data, as a full disk or a broken download leaves it.
std::string beginning(double share) {
    std::ostringstream whole;
    whole << std::ifstream(RecognizerProcess::defaultDataFolder() + "/chi_sim.traineddata",
                           std::ios::binary)
                 .rdbuf();
    const std::string text = whole.str();
    return text.substr(0, static_cast<std::size_t>(share * static_cast<double>(text.size())));
}

class TemporaryData {
  public:
    TemporaryData() {
        std::string pattern = (std::filesystem::temp_directory_path() / "velmora-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~TemporaryData() {
        std::error_code error;
        std::filesystem::remove_all(folder_, error);
    }
    std::string path() const { return folder_.string(); }
    void link(const char* file) const {
        std::filesystem::create_symlink(
            std::filesystem::path(RecognizerProcess::defaultDataFolder()) / file, folder_ / file);
    }
    void write(const char* file, const std::string& content) const {
        std::ofstream(folder_ / file) << content;
    }

  private:
    std::filesystem::path folder_;
};

TEST(RecognizerProcess, AnswersNothingBeforeItIsStarted) {
    RecognizerProcess process({});
    EXPECT_EQ(process.state().worker, Worker::notStarted);
    EXPECT_FALSE(process.read(someLine(), ScriptModel::simplified));
    EXPECT_EQ(process.processId(), -1);
}

TEST(RecognizerProcess, LoadsBothLanguagesInTheBackground) {
    RecognizerProcess process({});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    const RecognizerState state = process.state();
    EXPECT_EQ(state.simplified, ModelState::ready);
    EXPECT_EQ(state.traditional, ModelState::ready);
    EXPECT_EQ(state.description(), "ready");
}

TEST(RecognizerProcess, AnotherWorkerTakesOverAfterACrash) {
    RecognizerProcess process({{}, {}, milliseconds(20000), milliseconds(0)});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    const pid_t first = process.processId();
    ASSERT_EQ(::kill(first, SIGSEGV), 0);
    siginfo_t ended{};  // Looked at, not reaped: that is the process object's task.
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(first), &ended, WEXITED | WNOWAIT), 0);
    EXPECT_FALSE(process.read(someLine(), ScriptModel::simplified));
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    EXPECT_NE(process.processId(), first);
    EXPECT_TRUE(process.read(someLine(), ScriptModel::simplified));
    EXPECT_EQ(::kill(first, 0), -1);
}

TEST(RecognizerProcess, AWorkerThatHangsIsReplacedWithinItsLimit) {
    RecognizerProcess process({{}, {}, milliseconds(300), milliseconds(0)});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    const pid_t first = process.processId();
    ASSERT_EQ(::kill(first, SIGSTOP), 0);
    EXPECT_FALSE(process.read(someLine(), ScriptModel::simplified));
    EXPECT_EQ(::kill(first, 0), -1);
    EXPECT_EQ(errno, ESRCH);
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    EXPECT_NE(process.processId(), first);
}

TEST(RecognizerProcess, EndsWithItsOwner) {
    pid_t worker = -1;
    {
        RecognizerProcess process({});
        process.start();
        ASSERT_TRUE(process.waitUntilReady(longEnough));
        worker = process.processId();
    }
    EXPECT_EQ(::kill(worker, 0), -1);
}

TEST(RecognizerProcess, TheWorkerEndsWhenTheProgramIsKilled) {
    std::array<int, 2> channel{};
    ASSERT_EQ(::pipe(channel.data()), 0);
    const pid_t program = ::fork();
    if (program == 0) {
        RecognizerProcess process({});
        process.start();
        process.waitUntilReady(longEnough);
        const pid_t worker = process.processId();
        if (::write(channel[1], &worker, sizeof(worker)) != sizeof(worker)) {
            ::_exit(1);
        }
        ::pause();
        ::_exit(0);
    }
    pid_t worker = -1;
    ASSERT_EQ(::read(channel[0], &worker, sizeof(worker)), static_cast<ssize_t>(sizeof(worker)));
    ASSERT_GT(worker, 0);
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    // The worker is nobody's child here: wait until its entry is gone or only a zombie is left.
    const auto deadline = std::chrono::steady_clock::now() + longEnough;
    bool gone = false;
    while (!gone && std::chrono::steady_clock::now() < deadline) {
        std::ifstream status("/proc/" + std::to_string(worker) + "/stat");
        std::string word;
        std::string state;
        gone = !(status >> word >> word >> state) || state == "Z";
        ::usleep(2000);
    }
    EXPECT_TRUE(gone);
    ::close(channel[0]);
    ::close(channel[1]);
}

/// What the worker is shown stays in memory: it writes no file, dumps no core, says nothing.
TEST(RecognizerProcess, TheWorkerKeepsPicturesToItself) {
    RecognizerProcess process({{}, {}, milliseconds(20000)});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    ASSERT_TRUE(process.read(someLine(), ScriptModel::simplified));
    const std::filesystem::path worker = "/proc/" + std::to_string(process.processId());

    // One byte is the limit that also keeps a crash from being handed to a collector.
    std::ifstream limits(worker / "limits");
    std::string core;
    for (std::string line; std::getline(limits, line);) {
        core = line.rfind("Max core file size", 0) == 0 ? line : core;
    }
    std::istringstream words(core.substr(std::min(core.size(), std::strlen("Max core file size"))));
    std::string soft;
    std::string hard;
    words >> soft >> hard;
    EXPECT_EQ(soft, "1");
    EXPECT_EQ(hard, "1");

    for (const auto& entry : std::filesystem::directory_iterator(worker / "fd")) {
        const std::string target = std::filesystem::read_symlink(entry.path()).string();
        const std::string number = entry.path().filename().string();
        if (number == "0" || number == "1" || number == "2") {
            EXPECT_EQ(target, "/dev/null") << number;
        } else if (number == "3") {
            EXPECT_EQ(target.rfind("socket:", 0), 0U) << target;
        } else {
            ADD_FAILURE() << number << " " << target;
        }
    }
}

TEST(RecognizerProcess, TellsWhichDataIsMissing) {
    const TemporaryData data;
    data.link("chi_sim.traineddata");
    RecognizerProcess process({{}, data.path(), milliseconds(20000)});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    const RecognizerState state = process.state();
    EXPECT_EQ(state.traditional, ModelState::missing);
    EXPECT_NE(state.description().find("install tesseract-ocr-chi-tra"), std::string::npos);
    EXPECT_EQ(state.status().stage, RecognitionStatus::Stage::ready);
    EXPECT_EQ(state.status().missing, std::vector<std::string>{"chi_tra"});
    EXPECT_TRUE(state.status().isBroken());
    EXPECT_TRUE(process.read(someLine(), ScriptModel::simplified));
    EXPECT_FALSE(process.read(someLine(), ScriptModel::traditional));
    EXPECT_EQ(process.state().worker, Worker::ready);
}

TEST(RecognizerProcess, CannotReadWithoutAnyData) {
    const TemporaryData data;
    RecognizerProcess process({{}, data.path(), milliseconds(20000)});
    process.start();
    EXPECT_FALSE(process.waitUntilReady(longEnough));
    EXPECT_EQ(process.state().simplified, ModelState::missing);
    EXPECT_EQ(process.state().traditional, ModelState::missing);
    EXPECT_EQ(process.state().status().stage, RecognitionStatus::Stage::unavailable);
}

TEST(RecognizerProcess, TellsWhichDataIsDamaged) {
    for (const std::string& content :
         {std::string("nonsense"), std::string(), std::string(100000, '\xFF'), beginning(0.1),
          beginning(0.6), beginning(0.99)}) {
        const TemporaryData data;
        data.write("chi_sim.traineddata", content);
        data.link("chi_tra.traineddata");
        RecognizerProcess process({{}, data.path(), milliseconds(20000), milliseconds(0)});
        process.start();
        ASSERT_TRUE(process.waitUntilReady(longEnough));
        const RecognizerState state = process.state();
        EXPECT_EQ(state.simplified, ModelState::damaged);
        EXPECT_EQ(state.status().damaged, std::vector<std::string>{"chi_sim"});
        EXPECT_EQ(state.traditional, ModelState::ready);
        EXPECT_NE(state.description().find("reinstall tesseract-ocr-chi-sim"), std::string::npos);
    }
}

TEST(RecognizerProcess, SaysSoWhereTheWorkerProgramIsMissing) {
    RecognizerProcess process({"/nonexistent/velmora-recognizer", {}});
    process.start();
    EXPECT_FALSE(process.waitUntilReady(longEnough));
    EXPECT_EQ(process.state().worker, Worker::unavailable);
    EXPECT_FALSE(process.read(someLine(), ScriptModel::simplified));
}

TEST(RecognizerProcess, GoesOnAfterManyFailuresOnceItIsLookedAt) {
    RecognizerProcess process({{}, {}, milliseconds(20000), milliseconds(0)});
    process.start();
    for (int failure = 0; failure < 8; ++failure) {
        ASSERT_TRUE(process.waitUntilReady(longEnough));
        ASSERT_EQ(::kill(process.processId(), SIGKILL), 0);
        EXPECT_FALSE(process.read(someLine(), ScriptModel::simplified));
        process.state();
    }
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    EXPECT_TRUE(process.read(someLine(), ScriptModel::simplified));
}

TEST(RecognizerProcess, SurvivesAProgramThatIsNoWorker) {
    RecognizerProcess process({"/bin/true", {}, milliseconds(20000)});
    process.start();
    EXPECT_FALSE(process.waitUntilReady(longEnough));
    EXPECT_FALSE(process.state().canRead());
}

TEST(RecognizerProcess, RefusesPicturesBeyondItsBounds) {
    RecognizerProcess process({});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    EXPECT_FALSE(process.read(GrayImage(9000, 48), ScriptModel::simplified));
    EXPECT_FALSE(process.read(GrayImage(10, 5000), ScriptModel::simplified));
    EXPECT_FALSE(process.read(GrayImage(), ScriptModel::simplified));
    EXPECT_EQ(process.state().worker, Worker::ready);
}

TEST(RecognizerProcess, AnswersTheSameWhatItWasToldBefore) {
    RecognizerProcess process({});
    EXPECT_FALSE(process.begin(someLine(), ScriptModel::simplified)) << "not started";
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    for (const ScriptModel model : {ScriptModel::simplified, ScriptModel::traditional}) {
        const auto reading = process.read(someLine(), model);
        ASSERT_TRUE(reading);
        process.begin(someLine(), model);
        EXPECT_EQ(process.read(someLine(), model), reading);
    }
    // What nobody asks for does not count as an answer.
    process.begin(someLine(), ScriptModel::simplified);
    EXPECT_TRUE(process.drawCharacter(U'中', ScriptModel::simplified));
    EXPECT_FALSE(process.begin(GrayImage(9000, 48), ScriptModel::simplified));
    EXPECT_FALSE(process.begin(GrayImage(), ScriptModel::simplified));
    EXPECT_EQ(process.state().worker, Worker::ready);
}

TEST(RecognizerProcess, DrawsCharactersInBothStyles) {
    RecognizerProcess process({});
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    for (const ScriptModel style : {ScriptModel::simplified, ScriptModel::traditional}) {
        const auto drawn = process.drawCharacter(U'中', style);
        ASSERT_TRUE(drawn);
        EXPECT_LT(*std::min_element(drawn->pixels().begin(), drawn->pixels().end()), 40);
    }
    EXPECT_FALSE(process.drawCharacter(char32_t{0x10FFFE}, ScriptModel::simplified));
    EXPECT_EQ(process.state().worker, Worker::ready);
}

}  // namespace
}  // namespace velmora
