// SPDX-License-Identifier: MIT
// The worker's knowledge of the forms of characters, with the fonts of this system.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"

namespace velmora {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds longEnough{60000};
constexpr int em = 48;  ///< As the worker draws single characters.

std::vector<char32_t> someCharacters() {
    std::u32string text = U"未末日曰土士己已巳中文字典词詞国國我们們天夭";
    std::sort(text.begin(), text.end());
    return {text.begin(), text.end()};
}

/// Until its forms are ready, with an upper bound. The worker tells when it is asked only.
bool waitForForms(RecognizerProcess& process) {
    const auto deadline = std::chrono::steady_clock::now() + longEnough;
    while (!process.matchCells({GrayImage(1, 1), 1, {}})) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

/// A line of characters as the system's font draws them.
CellsToMatch lineOf(RecognizerProcess& process, const std::u32string& text) {
    CellsToMatch request;
    request.strip = GrayImage(em * static_cast<int>(text.size()), em + 4);
    request.em = em;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int left = em * static_cast<int>(i);
        request.cells.push_back({{left, left + em}, {}});
        const auto drawn = process.drawCharacter(text[i], ScriptModel::simplified);
        for (int y = 0; drawn && y < em; ++y) {
            std::copy_n(drawn->row(y), em, request.strip.row(y + 2) + left);
        }
    }
    return request;
}

std::u32string bestOf(const std::optional<MatchedCells>& matches) {
    std::u32string text;
    for (const auto& cell : matches ? matches->cells : std::vector<std::vector<GlyphMatch>>()) {
        text += cell.empty() ? U'?' : cell.front().character;
    }
    return text;
}

class GlyphMatching : public ::testing::Test {
  protected:
    RecognizerProcess::Options options() const {
        RecognizerProcess::Options options;
        options.answerLimit = longEnough;
        options.glyphFolder = folder_.path().string();
        return options;
    }
    static bool startAndKnow(RecognizerProcess& process) {
        process.start();
        process.setGlyphs(someCharacters());
        return process.waitUntilReady(longEnough) && waitForForms(process);
    }
    std::filesystem::path file() const { return folder_.path() / "glyphs.bin"; }

    testing::TemporaryFolder folder_;
};

TEST_F(GlyphMatching, TellsCharactersApartThatDifferByAStroke) {
    RecognizerProcess process(options());
    ASSERT_TRUE(startAndKnow(process));
    for (const std::u32string text : {U"未末天夭", U"土士己已巳", U"国國词詞"}) {
        const auto matches = process.matchCells(lineOf(process, text));
        EXPECT_EQ(bestOf(matches), text);
        EXPECT_GT(matches->fontFit, 0.9F);
    }
}

TEST_F(GlyphMatching, ComparesGivenCharactersThatItDoesNotKnow) {
    RecognizerProcess process(options());
    ASSERT_TRUE(startAndKnow(process));
    CellsToMatch request = lineOf(process, U"中龙文");
    request.cells[1].candidates = {U'龙', U'尤'};
    EXPECT_EQ(bestOf(process.matchCells(request)).size(), 3U);
    const auto matches = process.matchCells(request);
    const auto exact = [](const GlyphMatch& a, const GlyphMatch& b) { return a.exact < b.exact; };
    const auto& cell = matches->cells[1];
    EXPECT_EQ(std::max_element(cell.begin(), cell.end(), exact)->character, U'龙');
}

TEST_F(GlyphMatching, CellsWithoutInkMatchNothing) {
    RecognizerProcess process(options());
    ASSERT_TRUE(startAndKnow(process));
    const CellsToMatch request{GrayImage(100, 30, 255), 24, {{{0, 24}, {U'中'}}, {{90, 400}, {}}}};
    const auto matches = process.matchCells(request);
    ASSERT_TRUE(matches);
    EXPECT_TRUE(matches->cells[0].empty());
    EXPECT_TRUE(matches->cells[1].empty());
}

/// Kilobytes that a process has in memory of what its memory map calls by this name (`[heap]` or
/// the end of a path).
long residentKilobytes(pid_t process, const std::string& name) {
    std::ifstream maps("/proc/" + std::to_string(process) + "/smaps");
    long sum = 0;
    bool isIt = false;
    for (std::string line; std::getline(maps, line);) {
        const bool begins = line.find('-') < line.find(' ');
        isIt = begins ? line.size() > name.size() && line.ends_with(name) : isIt;
        if (isIt && line.rfind("Rss:", 0) == 0) {
            sum += std::atol(line.c_str() + 4);
        }
    }
    return sum;
}

bool waitUntil(const std::function<bool()>& isSo) {
    const auto deadline = std::chrono::steady_clock::now() + longEnough;
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

TEST_F(GlyphMatching, AWorkerThatNobodyAsksGivesItsMemoryBack) {
    RecognizerProcess process(options());
    ASSERT_TRUE(startAndKnow(process));
    const CellsToMatch line = lineOf(process, U"中文字典");
    const pid_t worker = process.processId();
    for (int time = 0; time < 2; ++time) {
        ASSERT_EQ(bestOf(process.matchCells(line)), U"中文字典");
        ASSERT_TRUE(waitUntil([&] { return residentKilobytes(worker, "glyphs.bin") == 0; }));
    }
    EXPECT_EQ(process.processId(), worker);
}

TEST_F(GlyphMatching, FormsAreDrawnOnceAndKept) {
    {
        RecognizerProcess process(options());
        ASSERT_TRUE(startAndKnow(process));
    }
    struct stat first {};
    ASSERT_EQ(::stat(file().c_str(), &first), 0);
    RecognizerProcess process(options());
    ASSERT_TRUE(startAndKnow(process));
    struct stat second {};
    ASSERT_EQ(::stat(file().c_str(), &second), 0);
    EXPECT_EQ(first.st_ino, second.st_ino);
}

TEST_F(GlyphMatching, DamagedFormsAreDrawnAgain) {
    std::ofstream(file()) << "this is not what it should be";
    RecognizerProcess process(options());
    ASSERT_TRUE(startAndKnow(process));
    EXPECT_EQ(bestOf(process.matchCells(lineOf(process, U"中文"))), U"中文");
}

TEST_F(GlyphMatching, WithoutAPlaceForThemThereAreNoForms) {
    std::ofstream(folder_ / "occupied") << "a file, not a folder";
    auto occupied = options();
    occupied.glyphFolder = (folder_ / "occupied").string();
    RecognizerProcess process(occupied);
    process.start();
    process.setGlyphs(someCharacters());
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    EXPECT_FALSE(process.matchCells(lineOf(process, U"中文")));
    EXPECT_TRUE(process.drawCharacter(U'中', ScriptModel::simplified)) << "the worker goes on";
}

TEST_F(GlyphMatching, NoCharactersNoForms) {
    RecognizerProcess process(options());
    process.start();
    ASSERT_TRUE(process.waitUntilReady(longEnough));
    EXPECT_FALSE(process.matchCells({GrayImage(1, 1), 1, {}}));
}

}  // namespace
}  // namespace velmora
