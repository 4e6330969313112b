// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/Platform/Linux/Tesseract/RecognizerState.h"
#include "Velmora/Platform/Recognition/WordPatterns.h"
#include "Velmora/Platform/TextRecognizer.h"

namespace velmora {

class LineRecognizer;
enum class LineEffort;
class RecognizerProcess;
class RememberingLineReader;
struct FoundLines;

/// Reads Chinese text in pictures: finds the lines itself and lets Tesseract, in a process of its
/// own, read those at the point of interest. `recognize` and `verify` belong to one thread, the
/// rest is for any.
class TesseractRecognizer : public TextRecognizer {
  public:
    struct Options {
        std::string workerExecutable;  ///< Empty: velmora-recognizer beside this program.
        std::string dataFolder;        ///< Language data; empty: where the system has it.
        std::chrono::milliseconds answerLimit{600};  ///< For one line.
        std::string glyphFolder{};  ///< For the forms of characters; empty: the user's cache.
    };

    explicit TesseractRecognizer(Options options);
    ~TesseractRecognizer() override;

    /// Starts loading the languages in the background; until they are there nothing is recognised.
    void start();

    /// Waits for that; whether anything can be read now.
    bool waitUntilReady(std::chrono::milliseconds limit);

    /// Lets the forms of the words' characters be prepared, which takes seconds the first time,
    /// and waits for that; whether they are at hand now.
    bool waitForGlyphs(std::chrono::milliseconds limit);

    /// How far loading is, and what is missing. Never waits.
    RecognizerState state() const;
    RecognitionStatus status() const override;

    /// The worker's process, or −1 where none runs.
    pid_t workerProcessId() const;

    /// Words that help where the picture is ambiguous. Callable at any time from any thread.
    void setWords(std::shared_ptr<const WordPatterns> words);

    std::optional<std::vector<TextObservation>> recognize(const Image& image,
                                                          std::optional<Point> pointOfInterest,
                                                          int candidateLimit) override;

    /// Reads the lines at the new point; those that were read elsewhere are left out.
    std::optional<std::vector<TextObservation>> verify(const Image& image,
                                                       const std::vector<TextObservation>& lines,
                                                       Point pointOfInterest,
                                                       int candidateLimit) override;

  private:
    struct Job;

    void readNear(Job& job, Point point);
    void readAll(Job& job);
    void readLines(Job& job, const FoundLines& found, std::optional<Point> point,
                   LineEffort effort);

    std::unique_ptr<RecognizerProcess> process_;
    std::unique_ptr<RememberingLineReader> reader_;
    std::unique_ptr<LineRecognizer> lines_;
    std::mutex wordsMutex_;
    std::shared_ptr<const WordPatterns> words_;
};

}  // namespace velmora
