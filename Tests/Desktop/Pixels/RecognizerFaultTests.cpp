// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>

#include "Tests/Desktop/Support/HoverStage.h"
#include "Tests/Desktop/Support/PixelPrograms.h"

// What becomes of hovering when the program that reads pixels for ours ends, hangs or is not there.
namespace velmora::test {

namespace {

class RecognizerFaults : public testing::Test {
  public:
    static void SetUpTestSuite() { stage_ = std::make_unique<HoverStage>(pixelPrograms().front()); }
    static void TearDownTestSuite() { stage_.reset(); }

  protected:
    void SetUp() override { stage_->leave(); }

    static HoverStage& stage() { return *stage_; }

    /// The process that reads pixels, or −1 where none runs.
    static pid_t worker();

    /// The same, waiting for it: after several failures it comes back some seconds later, when
    /// something is to be read.
    static pid_t awaitWorker();

    /// Hovers now here and now there until a word is read; the hovers that found nothing.
    static int hoversUntilRead();

    /// Hovers once and expects an answer, whatever it is, with our program alive.
    static void expectAnswer();

  private:
    static inline std::unique_ptr<HoverStage> stage_;
};

pid_t RecognizerFaults::worker() {
    for (const pid_t process : stage().velmora().processes()) {
        std::string name;
        std::ifstream("/proc/" + std::to_string(process) + "/comm") >> name;
        if (name == "velmora-recogni") {  // The kernel keeps fifteen letters.
            return process;
        }
    }
    return -1;
}

pid_t RecognizerFaults::awaitWorker() {
    std::size_t position = 0;
    stage().desktop().waitUntil([&position] {
        if (worker() > 0) {
            return true;
        }
        // What was read before needs nobody to read it.
        stage().leave();
        stage().hover(position % 2 == 0 ? 0 : 5, position % SampleText::charactersPerLine);
        ++position;
        return worker() > 0;
    });
    stage().leave();
    // One that has just come back still loads its languages.
    stage().desktop().awaitRest(stage().velmora().process());
    return worker();
}

int RecognizerFaults::hoversUntilRead() {
    constexpr int most = 20;
    for (int hovers = 0; hovers < most; ++hovers) {
        const std::size_t line = hovers % 2 == 0 ? 0 : 5;
        const Hover hover = stage().hover(line, 8);
        if (!hover.word().empty()) {
            EXPECT_EQ(hover.word(), stage().text().word(line, 8).matchedText)
                << hover.record.dump();
            return hovers;
        }
        stage().leave();
    }
    ADD_FAILURE() << "nothing is read any more";
    return most;
}

void RecognizerFaults::expectAnswer() {
    const Hover hover = stage().hover(3, 8);
    EXPECT_TRUE(hover.record.is_object());
    EXPECT_TRUE(stage().velmora().process().isRunning());
}

TEST_F(RecognizerFaults, ReadingGoesOnAfterACrash) {
    hoversUntilRead();
    for (const int signal : {SIGKILL, SIGSEGV, SIGABRT}) {
        const pid_t before = awaitWorker();
        ASSERT_GT(before, 0);
        ASSERT_EQ(kill(before, signal), 0);
        expectAnswer();
        stage().leave();
        hoversUntilRead();
        EXPECT_NE(worker(), before);
    }
}

TEST_F(RecognizerFaults, AReaderThatHangsIsReplaced) {
    hoversUntilRead();
    const pid_t before = awaitWorker();
    ASSERT_GT(before, 0);
    ASSERT_EQ(kill(before, SIGSTOP), 0);
    expectAnswer();
    EXPECT_NE(worker(), before);
    stage().leave();
    hoversUntilRead();
}

TEST_F(RecognizerFaults, AReaderThatEndsInTheMiddleOfAHoverCostsThatHover) {
    hoversUntilRead();
    stage().leave();
    for (int round = 0; round < 5; ++round) {
        const pid_t reader = worker();
        // The dwell begins to read a moment after the pointer came to rest.
        const std::size_t before = stage().velmora().moments().size();
        const Point place = stage().lines().at(2).middle(static_cast<std::size_t>(3 + round));
        stage().desktop().movePointer(static_cast<int>(place.x), static_cast<int>(place.y));
        ASSERT_TRUE(stage().desktop().waitUntil(
            [&] { return stage().velmora().moments().size() > before; }));
        if (reader > 0) {
            kill(reader, SIGKILL);
        }
        stage().leave();
        hoversUntilRead();
        stage().leave();
    }
    EXPECT_TRUE(stage().velmora().process().isRunning());
}

}  // namespace
}  // namespace velmora::test
