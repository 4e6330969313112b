// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/TesseractEngine.h"
#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {

/// The engines of both scripts. A line that will be asked for can be read by the companion while
/// its program looks at other things. All calls come from the thread that answers.
class ScriptReaders {
  public:
    explicit ScriptReaders(Companion& companion) : companion_(companion) {}

    ModelState load(const std::string& dataFolder, ScriptModel model);

    /// Lets the companion read a line; does nothing where there is none. Of lines that nobody
    /// asks for only the last few are kept.
    void begin(ReadLineRequest request);

    /// Reads a line, or waits for the companion's reading of it.
    std::optional<LineReading> read(const ReadLineRequest& request);

  private:
    /// A line that the companion is to read.
    struct Ahead {
        enum class State { waiting, running, done };

        ReadLineRequest request;
        State state = State::waiting;
        std::optional<LineReading> reading;
    };
    struct Engine {
        std::mutex mutex;  ///< Of the engine, which is for one thread at a time.
        std::unique_ptr<TesseractEngine> engine;
    };

    static constexpr std::size_t mostAhead = 2;

    std::optional<LineReading> readNow(const ReadLineRequest& request);
    void readAhead(const std::shared_ptr<Ahead>& line);

    Companion& companion_;
    std::array<Engine, 2> engines_;
    std::mutex mutex_;  ///< Of the lines that are read ahead, whose requests do not change.
    std::condition_variable finished_;
    std::deque<std::shared_ptr<Ahead>> ahead_;
};

}  // namespace velmora
