// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Speech/SpeechDispatcherSynthesizer.h"

#include <pthread.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "Velmora/Platform/Linux/Speech/SpeechDaemonConnection.h"

namespace velmora {
namespace {

constexpr double normalWordsPerMinute = 175;
constexpr double slowestWordsPerMinute = 80;
constexpr double fastestWordsPerMinute = 450;
constexpr auto longestGoodbye = std::chrono::milliseconds(200);

}  // namespace

/// What the main thread asks of the thread that talks to the daemon. Shared by both, so that
/// whichever ends last frees it.
struct SpeechDispatcherSynthesizer::Worker {
    struct Request {
        bool cancelFirst = false;
        std::optional<SpeechUtterance> utterance;
    };

    mutable std::mutex mutex;
    std::condition_variable changed;
    std::optional<Request> waiting;
    bool started = false;
    bool stopping = false;
    bool ended = false;
    unsigned long long newest = 0;    ///< Number of the newest utterance asked for.
    unsigned long long speaking = 0;  ///< Number of the utterance being said; 0 for silence.

    static void start(const std::shared_ptr<Worker>& self) {
        if (!std::exchange(self->started, true)) {
            std::thread([self] { self->run(); }).detach();
        }
    }

    void finished(unsigned long long number) {
        const std::lock_guard lock(mutex);
        if (speaking == number) {
            speaking = 0;
        }
    }

    std::optional<Request> next() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return stopping || waiting; });
        return std::exchange(waiting, std::nullopt);
    }

    /// A daemon that dies while it is written to would end the whole process by a signal. The
    /// library's own thread inherits this mask.
    static void blockSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
    }

    /// An empty text says nothing; some daemons end when they are handed one.
    static bool say(SpeechDaemonConnection& connection, const SpeechUtterance& utterance) {
        return !utterance.text.empty() && connection.say(utterance);
    }

    void run() {
        blockSignals();
        SpeechDaemonConnection connection([this](unsigned long long number) { finished(number); });
        while (auto request = next()) {
            if (request->cancelFirst) {
                connection.cancel();
            }
            if (request->utterance && !say(connection, *request->utterance)) {
                finished(request->utterance->number);
            }
            const std::lock_guard lock(mutex);
            if (stopping && !waiting) {
                break;
            }
        }
        connection.close();
        const std::lock_guard lock(mutex);
        ended = true;
        changed.notify_all();
    }
};

SpeechDispatcherSynthesizer::SpeechDispatcherSynthesizer() : worker_(std::make_shared<Worker>()) {}

SpeechDispatcherSynthesizer::~SpeechDispatcherSynthesizer() {
    std::unique_lock lock(worker_->mutex);
    if (!worker_->started) {
        return;
    }
    worker_->stopping = true;
    worker_->waiting = Worker::Request{worker_->speaking != 0, std::nullopt};
    worker_->changed.notify_all();
    worker_->changed.wait_for(lock, longestGoodbye, [this] { return worker_->ended; });
}

bool SpeechDispatcherSynthesizer::isSpeaking() const {
    const std::lock_guard lock(worker_->mutex);
    return worker_->speaking != 0;
}

void SpeechDispatcherSynthesizer::stopImmediately() {
    const std::lock_guard lock(worker_->mutex);
    if (worker_->speaking == 0) {
        return;
    }
    worker_->speaking = 0;
    worker_->waiting = Worker::Request{true, std::nullopt};
    worker_->changed.notify_all();
}

void SpeechDispatcherSynthesizer::speak(const std::string& text, const std::string& language,
                                        double rate) {
    const std::lock_guard lock(worker_->mutex);
    Worker::start(worker_);
    // A cut that the worker has not carried out yet still comes before the new words.
    const bool cancelFirst = worker_->waiting && worker_->waiting->cancelFirst;
    const auto number = ++worker_->newest;
    worker_->speaking = number;
    worker_->waiting =
        Worker::Request{cancelFirst, SpeechUtterance{number, text, language, daemonRate(rate)}};
    worker_->changed.notify_all();
}

int SpeechDispatcherSynthesizer::daemonRate(double rate) {
    const double difference = normalWordsPerMinute * (rate - 1);
    const double range = difference < 0 ? normalWordsPerMinute - slowestWordsPerMinute
                                        : fastestWordsPerMinute - normalWordsPerMinute;
    return static_cast<int>(std::lround(std::clamp(100 * difference / range, -100.0, 100.0)));
}

std::string SpeechDispatcherSynthesizer::languageTag(const std::string& outputModule,
                                                     const std::string& language) {
    return outputModule.starts_with("espeak-ng") ? "cmn-latn-pinyin" : language;
}

}  // namespace velmora
