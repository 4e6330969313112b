// SPDX-License-Identifier: MIT
#include "Velmora/WatchedApplication.h"

#include <QEvent>
#include <QLoggingCategory>
#include <QThread>
#include <chrono>

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(mainThreadLog, "velmora.mainthread", QtWarningMsg)

constexpr std::chrono::milliseconds frame{16};

}  // namespace

WatchedApplication::WatchedApplication(int& argumentCount, char** arguments)
    : QApplication(argumentCount, arguments), watches_(mainThreadLog().isDebugEnabled()) {}

bool WatchedApplication::notify(QObject* receiver, QEvent* event) {
    // Events that others send on their way are part of those.
    if (!watches_ || depth_ > 0 || QThread::currentThread() != thread()) {
        return QApplication::notify(receiver, event);
    }
    // The receiver may be gone afterwards.
    const char* const name = receiver->metaObject()->className();
    const int type = event->type();
    const auto start = std::chrono::steady_clock::now();
    ++depth_;
    const bool handled = QApplication::notify(receiver, event);
    --depth_;
    const auto taken = std::chrono::steady_clock::now() - start;
    if (taken > frame) {
        qCDebug(mainThreadLog, "%.1f ms, event %d to %s",
                std::chrono::duration<double, std::milli>(taken).count(), type, name);
    }
    return handled;
}

}  // namespace velmora
