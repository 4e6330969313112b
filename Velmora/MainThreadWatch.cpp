// SPDX-License-Identifier: MIT
#include "Velmora/MainThreadWatch.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

#include <QLoggingCategory>
#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(mainThreadLog, "velmora.mainthread", QtWarningMsg)

using std::chrono::nanoseconds;

constexpr std::chrono::milliseconds frame{16};

/// How long this thread was ready to work so far and had no processor, which others had.
class QueueTime {
  public:
    QueueTime() : file_(::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC)) {}
    QueueTime(const QueueTime&) = delete;
    QueueTime& operator=(const QueueTime&) = delete;
    ~QueueTime() {
        if (file_ >= 0) {
            ::close(file_);
        }
    }

    /// Nothing where the system does not tell.
    nanoseconds soFar() const {
        std::array<char, 96> text{};
        long long queued = 0;
        if (file_ < 0 || ::pread(file_, text.data(), text.size() - 1, 0) <= 0 ||
            std::sscanf(text.data(), "%*d %lld", &queued) != 1) {
            return nanoseconds(0);
        }
        return nanoseconds(queued);
    }

  private:
    int file_;
};

/// What the main thread has used so far.
struct Usage {
    nanoseconds passed{0};
    nanoseconds processor{0};
    nanoseconds queued{0};
    long waits = 0;

    static nanoseconds read(clockid_t clock) {
        timespec time{};
        clock_gettime(clock, &time);
        return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
    }

    static Usage now() {
        static const QueueTime queue;
        rusage usage{};
        getrusage(RUSAGE_THREAD, &usage);
        return {read(CLOCK_MONOTONIC), read(CLOCK_THREAD_CPUTIME_ID), queue.soFar(),
                usage.ru_nvcsw};
    }

    Usage operator-(const Usage& before) const {
        return {passed - before.passed, processor - before.processor, queued - before.queued,
                waits - before.waits};
    }

    /// Everything but the time without a processor, which is nothing that the thread does.
    nanoseconds kept() const { return std::max(passed - queued, processor); }
    /// What it waited for others.
    nanoseconds waited() const { return kept() - processor; }
};

struct Event {
    const char* receiver = "none";
    int type = 0;
    nanoseconds taken{0};
};

double milliseconds(nanoseconds time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

/// From one look for what happened to the next. The event loop's hook takes no data, hence one for
/// the process.
struct Stretch {
    GPollFunc look = nullptr;
    std::optional<Usage> start;
    Event longestEvent;
    nanoseconds longestKept{0};
    nanoseconds longestProcessor{0};

    void end() {
        if (!start) {
            return;
        }
        const Usage used = Usage::now() - *start;
        if (used.passed > frame || used.kept() > longestKept || used.processor > longestProcessor) {
            qCDebug(mainThreadLog,
                    "%.1f ms: %.1f at work, %.1f in %ld waits, %.1f without a processor, event %d "
                    "to %s (%.1f ms)",
                    milliseconds(used.passed), milliseconds(used.processor),
                    milliseconds(used.waited()), used.waits, milliseconds(used.queued),
                    longestEvent.type, longestEvent.receiver, milliseconds(longestEvent.taken));
        }
        longestKept = std::max(longestKept, used.kept());
        longestProcessor = std::max(longestProcessor, used.processor);
        start.reset();
    }
};

Stretch& stretch() {
    static Stretch current;
    return current;
}

gint watchedLook(GPollFD* descriptors, guint count, gint timeout) {
    Stretch& current = stretch();
    current.end();
    const gint found = current.look(descriptors, count, timeout);
    current.longestEvent = {};
    current.start = Usage::now();
    return found;
}

}  // namespace

MainThreadWatch::MainThreadWatch() {
    if (isWanted()) {
        stretch().look = g_main_context_get_poll_func(nullptr);
        g_main_context_set_poll_func(nullptr, watchedLook);
    }
}

MainThreadWatch::~MainThreadWatch() {
    if (stretch().look != nullptr) {
        g_main_context_set_poll_func(nullptr, stretch().look);
    }
}

bool MainThreadWatch::isWanted() {
    return mainThreadLog().isDebugEnabled();
}

void MainThreadWatch::noteEvent(const char* receiver, int type, nanoseconds taken) {
    Event& longest = stretch().longestEvent;
    if (taken > longest.taken) {
        longest = {receiver, type, taken};
    }
}

}  // namespace velmora
