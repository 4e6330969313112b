// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/Support/EventLoop.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTimer>

namespace velmora::test {
namespace {

constexpr int patience = 60000;  // Milliseconds; machines that run tests may be slow.
constexpr int lookAgain = 50;

int argumentCount = 1;
char programName[] = "test";
char* arguments[] = {programName, nullptr};

}  // namespace

EventLoop::EventLoop()
    : application_(std::make_unique<QCoreApplication>(argumentCount, arguments)) {}

EventLoop::EventLoop(const std::string& display, const std::string& screenFactors) {
    qputenv("DISPLAY", display.c_str());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_QPA_PLATFORMTHEME", "none");
    if (screenFactors.empty()) {
        qunsetenv("QT_SCREEN_SCALE_FACTORS");
    } else {
        qputenv("QT_SCREEN_SCALE_FACTORS", screenFactors.c_str());
    }
    application_ = std::make_unique<QGuiApplication>(argumentCount, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

EventLoop::~EventLoop() = default;

bool EventLoop::waitUntil(const std::function<bool()>& condition) {
    QElapsedTimer time;
    time.start();
    // What no event announces (another program's doing) is looked at again now and then.
    QTimer again;
    again.start(lookAgain);
    while (!condition()) {
        if (time.elapsed() > patience) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void EventLoop::settle() {
    while (handleNow()) {
    }
}

bool EventLoop::handleNow() {
    return QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
}

}  // namespace velmora::test
