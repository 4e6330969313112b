// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/Recognition.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "Velmora/Platform/Linux/Tesseract/LineDetector.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"
#include "Velmora/Platform/Recognition/DictionaryWords.h"

namespace velmora {
namespace {

/// The recogniser with the thread that works out its words, which ends with it.
class LoadingRecognizer final : public TesseractRecognizer {
  public:
    LoadingRecognizer() : TesseractRecognizer(Options{}) {}
    LoadingRecognizer(const LoadingRecognizer&) = delete;
    LoadingRecognizer& operator=(const LoadingRecognizer&) = delete;
    ~LoadingRecognizer() override {
        if (words_.joinable()) {
            words_.join();
        }
    }

    void load(std::shared_ptr<const DictionaryStore> dictionary) {
        start();
        if (dictionary && !words_.joinable()) {
            words_ = std::thread([this, dictionary = std::move(dictionary)] {
                setWords(wordPatternsOf(*dictionary));
            });
        }
    }

    /// Until text is read and, a little longer, until the forms of characters are at hand, which
    /// they are at once where they have been drawn before. Whether text is read.
    bool wait(std::chrono::milliseconds limit) {
        if (!waitUntilReady(limit)) {
            return false;
        }
        if (words_.joinable()) {
            words_.join();
            waitForGlyphs(std::min(limit, longestForForms));
        }
        return true;
    }

  private:
    static constexpr std::chrono::milliseconds longestForForms{4000};

    std::thread words_;
};

}  // namespace

void addRecognition(PlatformBackends& backends) {
    const auto recognizer = std::make_shared<LoadingRecognizer>();
    backends.textRecognizer = recognizer;
    backends.textRectangleDetector = std::make_shared<LineDetector>();
    backends.startRecognition = [recognizer](std::shared_ptr<const DictionaryStore> dictionary) {
        recognizer->load(std::move(dictionary));
    };
    backends.waitForRecognition = [recognizer](std::chrono::milliseconds limit) {
        return recognizer->wait(limit);
    };
}

}  // namespace velmora
