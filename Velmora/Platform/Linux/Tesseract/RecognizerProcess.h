// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Linux/Tesseract/RecognizerState.h"
#include "Velmora/Platform/Recognition/LineReader.h"

namespace velmora {

class ChildProcess;

/// Reads lines in a worker program of their own, so that whatever a picture does to the
/// recognition library costs no more than one answer: a worker that crashes or does not answer in
/// time is killed and another one started, which loads while hovering goes on without it.
/// Thread-safe.
class RecognizerProcess : public LineReader {
  public:
    using Duration = std::chrono::milliseconds;

    struct Options {
        std::string executable;       ///< Empty: `defaultExecutable()`.
        std::string dataFolder;       ///< Of the language data; empty: where the system has it.
        Duration answerLimit{600};    ///< For one line.
        Duration restartPause{2000};  ///< After several failures in a row.
        std::string glyphFolder{};    ///< For the forms of characters; empty: the user's cache.
    };

    explicit RecognizerProcess(Options options);
    ~RecognizerProcess() override;

    /// Starts the worker; its languages load in the background.
    void start();

    /// Waits until the languages are loaded or cannot be; whether something can be read.
    bool waitUntilReady(Duration limit);

    /// How far it is, as of the last answer where a line is being read just now. Never waits.
    RecognizerState state();

    /// The worker's process, or −1 where none runs.
    pid_t processId();

    std::optional<LineReading> read(const GrayImage& line, ScriptModel model) override;
    /// Never waits for the answer. The worker keeps the last two such readings.
    bool begin(const GrayImage& line, ScriptModel model) override;
    std::optional<GrayImage> drawCharacter(char32_t character, ScriptModel style) override;

    /// The worker prepares what it needs in the background when it is first asked.
    std::optional<MatchedCells> matchCells(const CellsToMatch& request) override;

    /// The characters (sorted) that `matchCells` finds; without them it finds nothing.
    void setGlyphs(std::vector<char32_t> characters);

    /// The worker program beside this one or in the folder where it is installed; empty where it
    /// is in neither place.
    static std::string defaultExecutable();

    /// The first of the usual folders with Chinese language data; the most usual one where none
    /// has any.
    static std::string defaultDataFolder();

    /// The folder in the user's cache for the forms of characters; empty where there is no home.
    static std::string defaultGlyphFolder();

  private:
    using Instant = std::chrono::steady_clock::time_point;

    void startWorker();
    void dropWorker();
    void workerFailed();
    void startAgainWhenDue();
    bool ensureWorker();
    bool takeReports(Instant deadline);
    void noteReport(const RecognizerMessage& message);
    std::optional<RecognizerMessage> ask(RecognizerMessage request);
    bool sendAll(const RecognizerMessage& message, Instant deadline);
    std::optional<RecognizerMessage> receive(Instant deadline);
    bool receiveAll(std::uint8_t* data, std::size_t size, Instant deadline);

    Options options_;
    std::mutex mutex_;
    std::unique_ptr<ChildProcess> worker_;
    RecognizerState state_;
    std::optional<ScriptModel> loadingModel_;
    std::string crashedModels_;  ///< Digits of models whose loading ended the worker.
    std::uint32_t sequence_ = 0;
    int failuresInARow_ = 0;
    Instant nextStart_{};
    std::vector<char32_t> glyphs_;
    bool workerKnowsGlyphs_ = false;
    std::mutex knownMutex_;
    RecognizerState known_;  ///< What `state` answers while the worker is busy.
};

}  // namespace velmora
