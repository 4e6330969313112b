// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/Support/PrivateServer.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <QElapsedTimer>
#include <QProcessEnvironment>
#include <QThread>
#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace velmora::test {
namespace {

constexpr int patience = 60000;  // Milliseconds; machines that run tests may be slow.

std::unique_ptr<QProcess> process() {
    auto made = std::make_unique<QProcess>();
    // Nothing outlives a test that is killed.
    made->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    return made;
}

QProcessEnvironment environmentOn(const std::string& display) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", QString::fromStdString(display));
    return environment;
}

}  // namespace

PrivateServer::PrivateServer(int width, int height, const QStringList& options)
    : server_(process()) {
    const QString screen = QStringLiteral("%1x%2x24").arg(width).arg(height);
    // The server looks for a free number itself and writes it when it is ready.
    server_->start("Xvfb", QStringList{"-displayfd", "1", "-noreset", "-nolisten", "tcp", "-screen",
                                       "0", screen, "+extension", "XTEST"} +
                               options);
    while (!server_->canReadLine()) {
        if (!server_->waitForReadyRead(patience)) {
            throw std::runtime_error("Xvfb does not start: " +
                                     server_->readAllStandardError().toStdString());
        }
    }
    display_ = ":" + server_->readLine().trimmed().toStdString();
    connection_ = xcb_connect(display_.c_str(), nullptr);
    if (xcb_connection_has_error(connection_) != 0) {
        throw std::runtime_error("no connection to " + display_);
    }
}

PrivateServer::~PrivateServer() {
    for (const auto& program : programs_) {
        program->kill();
        program->waitForFinished(patience);
    }
    if (connection_ != nullptr) {
        xcb_disconnect(connection_);
    }
    server_->terminate();
    if (!server_->waitForFinished(patience)) {
        server_->kill();
        server_->waitForFinished(patience);
    }
}

void PrivateServer::crash() {
    server_->kill();
    server_->waitForFinished(patience);
}

void PrivateServer::pause() {
    const auto id = static_cast<pid_t>(server_->processId());
    ::kill(id, SIGSTOP);
    siginfo_t stopped{};
    if (::waitid(P_PID, static_cast<id_t>(id), &stopped, WSTOPPED | __WALL) != 0) {
        throw std::runtime_error("the server does not pause");
    }
}

void PrivateServer::goOn() {
    ::kill(static_cast<pid_t>(server_->processId()), SIGCONT);
}

QProcess& PrivateServer::launch(const QString& program, const QStringList& arguments) {
    programs_.push_back(process());
    QProcess& started = *programs_.back();
    started.setProcessEnvironment(environmentOn(display_));
    started.setStandardOutputFile(QProcess::nullDevice());
    started.setStandardErrorFile(QProcess::nullDevice());
    started.start(program, arguments);
    if (!started.waitForStarted(patience)) {
        throw std::runtime_error("cannot start " + program.toStdString());
    }
    return started;
}

void PrivateServer::startWindowManager() {
    // Once it has taken care of a window that was there before, it misses none.
    const xcb_window_t early = xcb_generate_id(connection_);
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, early, root(), 0, 0, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(connection_, early);
    finish();
    launch("openbox", {"--sm-disable"});
    QElapsedTimer time;
    time.start();
    while (!isManaged(early)) {
        if (time.elapsed() > patience) {
            throw std::runtime_error("the window manager does not start");
        }
        QThread::msleep(5);
    }
    xcb_destroy_window(connection_, early);
    finish();
}

bool PrivateServer::isManaged(std::uint32_t window) {
    constexpr std::string_view name = "_NET_CLIENT_LIST";
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection_,
                              xcb_intern_atom(connection_, 0, name.size(), name.data()), nullptr),
        &std::free);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> list(
        xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, root(), atom ? atom->atom : 0, XCB_ATOM_WINDOW, 0, 64),
            nullptr),
        &std::free);
    if (!list || list->format != 32) {
        return false;
    }
    const auto* const first = static_cast<const std::uint32_t*>(xcb_get_property_value(list.get()));
    const auto* const last = first + list->value_len;
    return std::find(first, last, window) != last;
}

std::uint32_t PrivateServer::root() const {
    return xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

void PrivateServer::run(const QString& program, const QStringList& arguments) {
    const auto once = process();
    once->setProcessEnvironment(environmentOn(display_));
    once->start(program, arguments);
    if (!once->waitForFinished(patience) || once->exitCode() != 0) {
        throw std::runtime_error(program.toStdString() +
                                 " failed: " + once->readAllStandardError().toStdString());
    }
}

void PrivateServer::finish() {
    std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void PrivateServer::fakeInput(int type, int detail, int x, int y) {
    xcb_test_fake_input(connection_, static_cast<std::uint8_t>(type),
                        static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME, root(),
                        static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    finish();
}

void PrivateServer::movePointer(int x, int y) {
    fakeInput(XCB_MOTION_NOTIFY, 0, x, y);
}

void PrivateServer::movePointerBy(int dx, int dy) {
    fakeInput(XCB_MOTION_NOTIFY, 1, dx, dy);
}

void PrivateServer::warpPointer(int x, int y) {
    xcb_warp_pointer(connection_, XCB_WINDOW_NONE, root(), 0, 0, 0, 0, static_cast<std::int16_t>(x),
                     static_cast<std::int16_t>(y));
    finish();
}

void PrivateServer::press(int button) {
    fakeInput(XCB_BUTTON_PRESS, button, 0, 0);
}

void PrivateServer::release(int button) {
    fakeInput(XCB_BUTTON_RELEASE, button, 0, 0);
}

int PrivateServer::keyCode(unsigned keysym) const {
    const xcb_setup_t* setup = xcb_get_setup(connection_);
    const int first = setup->min_keycode;
    const int count = setup->max_keycode - first + 1;
    auto* reply = xcb_get_keyboard_mapping_reply(
        connection_,
        xcb_get_keyboard_mapping(connection_, setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr);
    int found = -1;
    for (int i = 0; reply != nullptr && i < count && found < 0; ++i) {
        if (xcb_get_keyboard_mapping_keysyms(reply)[i * reply->keysyms_per_keycode] == keysym) {
            found = first + i;
        }
    }
    std::free(reply);
    if (found < 0) {
        throw std::runtime_error("no key of that symbol");
    }
    return found;
}

void PrivateServer::keyDown(unsigned keysym) {
    fakeInput(XCB_KEY_PRESS, keyCode(keysym), 0, 0);
}

void PrivateServer::keyUp(unsigned keysym) {
    fakeInput(XCB_KEY_RELEASE, keyCode(keysym), 0, 0);
}

}  // namespace velmora::test
