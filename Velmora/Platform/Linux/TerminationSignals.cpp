// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/TerminationSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <atomic>
#include <cerrno>
#include <utility>

namespace velmora {

namespace {

// All that a signal handler may touch.
std::atomic<int> writeEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void wakeMainThread(int /*signal*/) {
    const int savedError = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd.load(), &byte, 1);
    errno = savedError;
}

constexpr std::array<int, 3> watchedSignals{SIGTERM, SIGINT, SIGHUP};

}  // namespace

class TerminationSignals::Pipe {
  public:
    explicit Pipe(std::function<void()> terminate) {
        if (::pipe2(ends_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
            return;
        }
        notifier_ = std::make_unique<QSocketNotifier>(ends_[0], QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                         [this, call = std::move(terminate)] {
                             std::array<char, 64> bytes{};
                             while (::read(ends_[0], bytes.data(), bytes.size()) > 0) {
                             }
                             call();
                         });
        writeEnd = ends_[1];
        for (std::size_t i = 0; i < watchedSignals.size(); ++i) {
            struct sigaction action {};
            action.sa_handler = wakeMainThread;
            action.sa_flags = SA_RESTART;
            ::sigaction(watchedSignals[i], &action, &before_[i]);
        }
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        if (ends_[0] < 0) {
            return;
        }
        for (std::size_t i = 0; i < watchedSignals.size(); ++i) {
            ::sigaction(watchedSignals[i], &before_[i], nullptr);
        }
        notifier_.reset();
        writeEnd = -1;
        ::close(ends_[0]);
        ::close(ends_[1]);
    }

  private:
    std::array<int, 2> ends_{-1, -1};
    std::array<struct sigaction, watchedSignals.size()> before_{};
    std::unique_ptr<QSocketNotifier> notifier_;
};

TerminationSignals::TerminationSignals(std::function<void()> terminate)
    : pipe_(std::make_unique<Pipe>(std::move(terminate))) {}

TerminationSignals::~TerminationSignals() = default;

}  // namespace velmora
