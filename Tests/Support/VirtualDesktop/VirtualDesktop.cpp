// SPDX-License-Identifier: MIT
#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

#include <stdlib.h>

#include <QImage>
#include <QString>
#include <algorithm>
#include <cmath>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>

#include "Tests/Support/VirtualDesktop/DesktopConnection.h"
#include "Tests/Support/VirtualDesktop/DesktopServices.h"

namespace velmora::test {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr double decoration = 40;  // The greatest that a window manager may add to a side.
constexpr auto glance = std::chrono::milliseconds(25);
// A window manager ignores what it is told of a window that it does not manage yet.
constexpr auto askAgain = std::chrono::milliseconds(500);

}  // namespace

struct VirtualDesktop::Parts {
    explicit Parts(const Options& options) : services(options), connection(services.display()) {}

    ~Parts() {
        for (const auto& [name, value] : replaced) {
            if (value) {
                setenv(name.c_str(), value->c_str(), 1);
            } else {
                unsetenv(name.c_str());
            }
        }
    }

    // Programs end first, the services last.
    DesktopServices services;
    DesktopConnection connection;
    std::vector<std::unique_ptr<ChildProcess>> programs;
    std::map<std::string, std::optional<std::string>> replaced;
};

VirtualDesktop::VirtualDesktop() : VirtualDesktop(Options{}) {}

VirtualDesktop::VirtualDesktop(const Options& options) : parts_(std::make_unique<Parts>(options)) {
    if (options.windowManager) {
        startWindowManager();
    }
    if (options.accessibility) {
        run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
             "org.a11y.Bus.GetAddress"});
        run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
             "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status", "string:IsEnabled",
             "variant:boolean:true"});
    }
}

void VirtualDesktop::startWindowManager() {
    launch({"openbox"});
    if (!waitUntil([this] { return parts_->connection.windowManagerIsThere(); })) {
        throw std::runtime_error("openbox does not start");
    }
    // It announces itself before it is ready, and what appears meanwhile never gets the focus.
    const std::uint64_t first = parts_->connection.openWindow();
    activateWindow(first);
    parts_->connection.closeWindow(first);
    waitUntil([&] { return parts_->connection.focusIsHeldByAnotherThan(first); });
}

VirtualDesktop::~VirtualDesktop() = default;

const std::string& VirtualDesktop::display() const {
    return parts_->services.display();
}

const std::string& VirtualDesktop::sessionBusAddress() const {
    return parts_->services.busAddress();
}

const std::filesystem::path& VirtualDesktop::folder() const {
    return parts_->services.folder();
}

ChildProcess::Environment VirtualDesktop::environment() const {
    return parts_->services.environment();
}

void VirtualDesktop::enter() {
    for (const auto& [name, value] : parts_->services.environment()) {
        const char* before = getenv(name.c_str());
        parts_->replaced.try_emplace(
            name, before == nullptr ? std::nullopt : std::optional<std::string>(before));
        setenv(name.c_str(), value.c_str(), 1);
    }
}

ChildProcess& VirtualDesktop::launch(std::vector<std::string> command,
                                     const ChildProcess::Environment& extraEnvironment) {
    parts_->programs.push_back(parts_->services.start(std::move(command), extraEnvironment));
    return *parts_->programs.back();
}

void VirtualDesktop::stop(ChildProcess& program) {
    std::erase_if(parts_->programs, [&](const auto& held) { return held.get() == &program; });
}

std::string VirtualDesktop::run(std::vector<std::string> command) {
    return parts_->services.run(std::move(command));
}

std::string VirtualDesktop::log() const {
    std::ostringstream text;
    text << std::ifstream(folder() / "log.txt").rdbuf();
    return text.str();
}

std::filesystem::path VirtualDesktop::writeFile(const std::string& name,
                                                const std::string& content) const {
    fs::path file = folder() / "home" / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
    return file;
}

std::vector<VirtualDesktop::Window> VirtualDesktop::windows() const {
    return parts_->connection.windows();
}

bool VirtualDesktop::waitUntil(const std::function<bool()>& condition, Milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    while (!condition()) {
        if (Clock::now() >= deadline) {
            return false;
        }
        parts_->connection.awaitEvent(glance);
    }
    return true;
}

VirtualDesktop::Window VirtualDesktop::waitForWindow(
    const std::function<bool(const Window&)>& wanted, Milliseconds timeout) {
    std::optional<Window> found;
    const bool seen = waitUntil(
        [&] {
            for (const Window& window : windows()) {
                if (wanted(window)) {
                    found = window;
                }
            }
            return found.has_value();
        },
        timeout);
    if (!seen) {
        throw std::runtime_error("the window did not appear; the programs wrote: " + log());
    }
    return *found;
}

VirtualDesktop::Window VirtualDesktop::waitForWindowOf(const ChildProcess& program,
                                                       Milliseconds timeout) {
    return waitForWindow(
        [&](const Window& window) {
            return window.processId > 0 && window.client.width > 40 && window.client.height > 20 &&
                   program.owns(window.processId);
        },
        timeout);
}

void VirtualDesktop::awaitRest(const ChildProcess& program, Milliseconds timeout) {
    constexpr auto stretch = std::chrono::milliseconds(500);
    constexpr auto little = std::chrono::milliseconds(30);  // A blinking caret, a clock.
    Milliseconds before = program.processorTime();
    long long readBefore = program.bytesRead();
    auto since = Clock::now();
    waitUntil(
        [&] {
            if (Clock::now() - since < stretch) {
                return false;
            }
            const Milliseconds worked = program.processorTime() - before;
            before += worked;
            // Who waits for a cold disk works as little as who has nothing to do.
            const long long read = program.bytesRead() - readBefore;
            readBefore += read;
            since = Clock::now();
            return worked <= little && read <= 0;
        },
        timeout);
}

void VirtualDesktop::placeWindow(std::uint64_t window, const Rect& client) {
    std::optional<Clock::time_point> asked;
    std::string where = "no place";
    const bool placed = waitUntil([&] {
        if (!asked || Clock::now() - *asked > askAgain) {
            parts_->connection.placeWindow(window, client);
            asked = Clock::now();
        }
        for (const Window& each : windows()) {
            if (each.id == window) {
                where = std::to_string(each.client.x) + ", " + std::to_string(each.client.y);
                return std::abs(each.client.x - client.x) <= decoration &&
                       std::abs(each.client.y - client.y) <= decoration;
            }
        }
        return false;
    });
    if (!placed) {
        throw std::runtime_error("the window does not move to its place; it stands at " + where);
    }
}

void VirtualDesktop::settleWindow(const ChildProcess& program, std::uint64_t window,
                                  const Rect& client) {
    const auto place = [this, window] {
        const std::vector<Window> all = windows();
        const auto found = std::find_if(all.begin(), all.end(),
                                        [window](const Window& each) { return each.id == window; });
        return found == all.end() ? Rect{} : found->client;
    };
    const auto deadline = Clock::now() + patience;
    Rect before;
    do {
        if (Clock::now() >= deadline) {
            throw std::runtime_error("the program goes on moving its window");
        }
        placeWindow(window, client);
        before = place();
        awaitRest(program);
    } while (!(place() == before));
}

void VirtualDesktop::activateWindow(std::uint64_t window) {
    std::optional<Clock::time_point> asked;
    const bool active = waitUntil([&] {
        if (!asked || Clock::now() - *asked > askAgain) {
            parts_->connection.activateWindow(window);
            asked = Clock::now();
        }
        return parts_->connection.holdsFocus(window);
    });
    if (!active) {
        throw std::runtime_error("the window does not get the focus");
    }
}

std::uint64_t VirtualDesktop::focusedWindow() const {
    return parts_->connection.focusedWindow();
}

void VirtualDesktop::movePointer(int x, int y) {
    parts_->connection.movePointer(x, y);
}

void VirtualDesktop::movePointerBy(int dx, int dy) {
    parts_->connection.movePointerBy(dx, dy);
}

void VirtualDesktop::pressButton(unsigned button) {
    parts_->connection.button(button, true);
}

void VirtualDesktop::releaseButton(unsigned button) {
    parts_->connection.button(button, false);
}

void VirtualDesktop::click(int x, int y, unsigned button) {
    movePointer(x, y);
    pressButton(button);
    releaseButton(button);
}

void VirtualDesktop::pressKey(const std::string& keysym) {
    parts_->connection.key(keysym, true);
}

void VirtualDesktop::releaseKey(const std::string& keysym) {
    parts_->connection.key(keysym, false);
}

void VirtualDesktop::typeKey(const std::string& keysym) {
    pressKey(keysym);
    releaseKey(keysym);
}

Image VirtualDesktop::screenshot() const {
    return screenshot({0, 0, 100000, 100000});
}

Image VirtualDesktop::screenshot(const Rect& area) const {
    return parts_->connection.capture(area);
}

Image VirtualDesktop::settledScreenshot(const Rect& area, Milliseconds timeout) {
    const auto same = [](const Image& a, const Image& b) {
        if (a.width() != b.width() || a.height() != b.height()) {
            return false;
        }
        for (int y = 0; y < a.height(); ++y) {
            if (!std::equal(a.row(y), a.row(y) + a.width(), b.row(y))) {
                return false;
            }
        }
        return true;
    };
    Image last = screenshot(area);
    auto since = Clock::now();
    waitUntil(
        [&] {
            Image next = screenshot(area);
            if (!same(last, next)) {
                last = std::move(next);
                since = Clock::now();
            }
            return Clock::now() - since > std::chrono::milliseconds(200);
        },
        timeout);
    return last;
}

void VirtualDesktop::savePng(const Image& image, const std::filesystem::path& file) {
    QImage copy(image.width(), image.height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        std::copy(image.row(y), image.row(y) + image.width(),
                  reinterpret_cast<std::uint32_t*>(copy.scanLine(y)));
    }
    copy.save(QString::fromStdString(file.string()), "PNG");
}

}  // namespace velmora::test
