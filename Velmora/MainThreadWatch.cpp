// SPDX-License-Identifier: MIT
#include "Velmora/MainThreadWatch.h"

#include <glib.h>
#include <sys/resource.h>
#include <time.h>

#include <QLoggingCategory>
#include <algorithm>
#include <optional>

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(mainThreadLog, "velmora.mainthread", QtWarningMsg)

using std::chrono::nanoseconds;

constexpr std::chrono::milliseconds frame{16};

/// What the main thread has used so far.
struct Usage {
    nanoseconds passed{0};
    nanoseconds processor{0};
    long waits = 0;
    long preemptions = 0;

    static nanoseconds read(clockid_t clock) {
        timespec time{};
        clock_gettime(clock, &time);
        return std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec);
    }

    static Usage now() {
        rusage usage{};
        getrusage(RUSAGE_THREAD, &usage);
        return {read(CLOCK_MONOTONIC), read(CLOCK_THREAD_CPUTIME_ID), usage.ru_nvcsw,
                usage.ru_nivcsw};
    }

    Usage operator-(const Usage& before) const {
        return {passed - before.passed, processor - before.processor, waits - before.waits,
                preemptions - before.preemptions};
    }
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
    nanoseconds longestPassed{0};
    nanoseconds longestProcessor{0};

    void end() {
        if (!start) {
            return;
        }
        const Usage used = Usage::now() - *start;
        if (used.passed > frame || used.passed > longestPassed ||
            used.processor > longestProcessor) {
            qCDebug(mainThreadLog,
                    "%.1f ms, %.1f of the processor, %ld waits, %ld preemptions, event %d to %s "
                    "(%.1f ms)",
                    milliseconds(used.passed), milliseconds(used.processor), used.waits,
                    used.preemptions, longestEvent.type, longestEvent.receiver,
                    milliseconds(longestEvent.taken));
        }
        longestPassed = std::max(longestPassed, used.passed);
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
