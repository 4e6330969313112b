// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <functional>

namespace velmora::testing {

/// The application object that event loops need; made once per process, unless the test has made
/// one with windows.
inline QCoreApplication& coreApplication() {
    if (QCoreApplication* const existing = QCoreApplication::instance()) {
        return *existing;
    }
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication application(count, arguments);
    return application;
}

/// Runs the event loop until the condition holds; false where it does not within the deadline.
inline bool waitUntil(const std::function<bool()>& condition, int deadlineMilliseconds = 20000) {
    coreApplication();
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(deadlineMilliseconds);
    QTimer beat;
    beat.start(5);
    while (!condition()) {
        if (!deadline.isActive()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}  // namespace velmora::testing
