// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/Recognition.h"

#include <algorithm>
#include <atomic>
#include <future>
#include <thread>
#include <utility>

#include "Velmora/Platform/Linux/Tesseract/LineDetector.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"
#include "Velmora/Platform/Recognition/DictionaryWords.h"

namespace velmora {
namespace {

/// The recogniser with the thread that starts its worker program and works out its words, which
/// ends with it. To start a program means to wait until the system has loaded it.
class LoadingRecognizer final : public TesseractRecognizer {
  public:
    LoadingRecognizer() : TesseractRecognizer(Options{}) {}
    LoadingRecognizer(const LoadingRecognizer&) = delete;
    LoadingRecognizer& operator=(const LoadingRecognizer&) = delete;
    ~LoadingRecognizer() override {
        ending_ = true;
        if (loading_.joinable()) {
            loading_.join();
        }
    }

    void load(std::shared_ptr<const DictionaryStore> dictionary) {
        if (std::exchange(hasBegun_, true)) {
            return;
        }
        knowsWords_ = dictionary != nullptr;
        loading_ = std::thread([this, dictionary = std::move(dictionary)] {
            start();
            started_.set_value();
            if (dictionary) {
                setWords(wordPatternsOf(*dictionary));
                askForForms();
            }
        });
    }

    /// Until text is read and, a little longer, until the forms of characters are at hand, which
    /// they are at once where they have been drawn before. Whether text is read.
    bool wait(std::chrono::milliseconds limit) {
        if (loading_.joinable()) {
            isStarted_.wait();
        }
        if (!waitUntilReady(limit)) {
            return false;
        }
        if (loading_.joinable() && knowsWords_) {
            loading_.join();
            waitForGlyphs(std::min(limit, longestForForms));
        }
        return true;
    }

  private:
    static constexpr std::chrono::milliseconds longestForForms{4000};
    static constexpr std::chrono::seconds longestForModels{30};
    static constexpr std::chrono::milliseconds glance{20};

    /// A first start draws the forms for some seconds: it begins before anybody needs them. Looks
    /// for the worker in short glances, in between which others may ask it.
    void askForForms() {
        const auto deadline = std::chrono::steady_clock::now() + longestForModels;
        while (!ending_ && std::chrono::steady_clock::now() < deadline) {
            if (waitUntilReady(glance)) {
                waitForGlyphs(std::chrono::milliseconds(0));
                return;
            }
        }
    }

    bool hasBegun_ = false;
    std::atomic<bool> ending_ = false;
    bool knowsWords_ = false;
    std::promise<void> started_;
    std::shared_future<void> isStarted_ = started_.get_future().share();
    std::thread loading_;
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
