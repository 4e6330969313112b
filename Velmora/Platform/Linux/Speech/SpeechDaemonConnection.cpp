// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Speech/SpeechDaemonConnection.h"

#include <speech-dispatcher/libspeechd.h>

#include <cstdlib>
#include <map>
#include <mutex>
#include <utility>

#include "Velmora/Platform/Linux/Speech/SpeechDispatcherSynthesizer.h"

namespace velmora {
namespace {

/// The daemon's notifications carry no user data, only the message number, and arrive on a thread
/// of the library. One process has one speech connection, so one register is enough.
struct Register {
    std::mutex mutex;
    std::map<std::size_t, unsigned long long> numberOfMessage;
    std::map<std::size_t, bool> endedBeforeNoted;
    SpeechDaemonConnection::Ended ended;
};

Register& notifications() {
    static auto* instance = new Register;  // The library's thread may outlive static objects.
    return *instance;
}

void messageEnded(std::size_t message, std::size_t /*client*/, SPDNotificationType /*type*/) {
    Register& book = notifications();
    SpeechDaemonConnection::Ended ended;
    unsigned long long number = 0;
    {
        const std::lock_guard lock(book.mutex);
        const auto found = book.numberOfMessage.find(message);
        if (found == book.numberOfMessage.end()) {
            book.endedBeforeNoted[message] = true;
            return;
        }
        number = found->second;
        book.numberOfMessage.erase(found);
        ended = book.ended;
    }
    if (ended) {
        ended(number);
    }
}

/// Remembers which utterance a message is; true where it has ended already.
bool noteMessage(std::size_t message, unsigned long long number) {
    Register& book = notifications();
    const std::lock_guard lock(book.mutex);
    const bool endedAlready = book.endedBeforeNoted.contains(message);
    book.endedBeforeNoted.clear();
    if (!endedAlready) {
        book.numberOfMessage[message] = number;
    }
    return endedAlready;
}

}  // namespace

struct SpeechDaemonConnection::Link {
    explicit Link(SPDConnection* handle) : connection(handle) {}
    ~Link() { spd_close(connection); }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    SPDConnection* connection;
    std::string outputModule;
};

SpeechDaemonConnection::SpeechDaemonConnection(Ended ended) : ended_(std::move(ended)) {}

SpeechDaemonConnection::~SpeechDaemonConnection() {
    close();
}

bool SpeechDaemonConnection::open() {
    if (link_) {
        return true;
    }
    char* error = nullptr;
    SPDConnection* handle =
        spd_open2("velmora", "lookup", nullptr, SPD_MODE_THREADED, nullptr, 1, &error);
    std::free(error);
    if (handle == nullptr) {
        return false;
    }
    link_ = std::make_unique<Link>(handle);
    {
        Register& book = notifications();
        const std::lock_guard lock(book.mutex);
        book.numberOfMessage.clear();
        book.endedBeforeNoted.clear();
        book.ended = ended_;
    }
    handle->callback_end = handle->callback_cancel = messageEnded;
    spd_set_notification_on(handle, SPD_END);
    spd_set_notification_on(handle, SPD_CANCEL);
    if (char* name = spd_get_output_module(handle)) {
        link_->outputModule = name;
        std::free(name);
    }
    return true;
}

bool SpeechDaemonConnection::sayOnce(const SpeechUtterance& utterance) {
    if (!open()) {
        return false;
    }
    const std::string tag =
        SpeechDispatcherSynthesizer::languageTag(link_->outputModule, utterance.language);
    if (spd_set_language(link_->connection, tag.c_str()) < 0 ||
        spd_set_voice_rate(link_->connection, utterance.rate) < 0) {
        return false;
    }
    const int message = spd_say(link_->connection, SPD_TEXT, utterance.text.c_str());
    if (message < 0) {
        return false;
    }
    if (message == 0 || noteMessage(static_cast<std::size_t>(message), utterance.number)) {
        ended_(utterance.number);
    }
    return true;
}

bool SpeechDaemonConnection::say(const SpeechUtterance& utterance) {
    if (sayOnce(utterance)) {
        return true;
    }
    // A daemon that was killed or restarted since: once more on a fresh connection.
    close();
    return sayOnce(utterance);
}

void SpeechDaemonConnection::cancel() {
    if (link_ && spd_cancel(link_->connection) < 0) {
        close();
    }
}

void SpeechDaemonConnection::close() {
    link_.reset();
    Register& book = notifications();
    const std::lock_guard lock(book.mutex);
    book.ended = nullptr;
}

}  // namespace velmora
