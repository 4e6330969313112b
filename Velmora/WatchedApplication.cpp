// SPDX-License-Identifier: MIT
#include "Velmora/WatchedApplication.h"

#include <QEvent>
#include <QThread>
#include <chrono>

namespace velmora {

WatchedApplication::WatchedApplication(int& argumentCount, char** arguments)
    : QApplication(argumentCount, arguments), watches_(MainThreadWatch::isWanted()) {}

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
    MainThreadWatch::noteEvent(name, type, std::chrono::steady_clock::now() - start);
    return handled;
}

}  // namespace velmora
