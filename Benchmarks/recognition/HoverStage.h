// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <string>

#include "Benchmarks/recognition/Corpus.h"
#include "Velmora/Platform/TextRecognizer.h"
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"
#include "VelmoraCore/DictionaryStore.h"

namespace velmora {

/// What one hover came to.
struct HoverOutcome {
    bool right = false;     ///< The word shown is the true one.
    bool wrong = false;     ///< Another word was shown.
    bool accepted = false;  ///< The first capture was good enough.
    bool cached = false;    ///< A line that was recognised for an earlier hover was used.
    Size capture;           ///< The last one that was recognised, as it was asked for.
    double milliseconds = 0;
    double processorMilliseconds = 0;  ///< Of this program and the worker together.
    std::string shown;
    std::string expected;
};

/// Hovers over pictures through the rules of text capture: one display of the picture's size, one
/// pixel a point, no program that tells its text.
class HoverStage {
  public:
    enum class Mode {
        anew,              ///< Every hover is read for itself.
        firstCaptureOnly,  ///< The same, and nothing after the first capture.
        cached,            ///< What was read for the hovers before may be used again.
    };

    HoverStage(std::shared_ptr<TextRecognizer> recognizer,
               std::shared_ptr<const DictionaryStore> dictionary, Mode mode);
    ~HoverStage();

    void show(Image image);
    HoverOutcome hover(const CorpusHover& hover);

    /// The process whose processor time counts too.
    void setWorker(pid_t worker) { worker_ = worker; }

  private:
    struct Recognizer;

    std::string word(const std::string& text, long long offset) const;

    Image image_;
    Size captured_;
    bool mayRemember_;  ///< What was read for the hovers before.
    pid_t worker_ = -1;
    std::shared_ptr<Recognizer> recognizer_;
    std::shared_ptr<const DictionaryStore> dictionary_;
    std::shared_ptr<AccessibilityTextExtractor> extractor_;
    std::shared_ptr<class ManualClock> clock_;
};

}  // namespace velmora
