// SPDX-License-Identifier: MIT
#include "Tests/Desktop/WalkThrough/WalkThrough.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "Tests/Desktop/Demo/ScreenPicture.h"
#include "Tests/Desktop/Support/ReadProgram.h"
#include "Tests/Support/EventLoop.h"

namespace velmora::test {

namespace {

constexpr Rect readerPlace{300, 90, 900, 700};
constexpr Point blankPlace{1120, 640};

std::unique_ptr<VirtualDesktop> makeDesktop() {
    VirtualDesktop::Options options;
    options.width = WalkThrough::width;
    options.height = WalkThrough::height;
    options.accessibility = false;  // Nobody has switched it on yet.
    auto desktop = std::make_unique<VirtualDesktop>(options);
    desktop->enter();
    return desktop;
}

/// Where pictures are kept; the build folder unless the environment says otherwise.
std::filesystem::path pictureFolder() {
    const char* const wanted = std::getenv("VELMORA_WALK_PICTURES");
    return wanted != nullptr && *wanted != '\0'
               ? std::filesystem::path(wanted)
               : std::filesystem::path(VELMORA_BUILD_FOLDER "/walk-through");
}

bool close(std::uint32_t a, std::uint32_t b) {
    constexpr int tolerance = 24;
    for (const int shift : {0, 8, 16}) {
        const auto part = [shift](std::uint32_t color) {
            return static_cast<int>((color >> shift) & 0xffU);
        };
        if (std::abs(part(a) - part(b)) > tolerance) {
            return false;
        }
    }
    return true;
}

}  // namespace

WalkThrough::WalkThrough(std::string name) : name_(std::move(name)), desktop_(makeDesktop()) {
    testing::coreApplication();
    paintDesktop();
    desktop_->launch({"picom", "--backend", "xrender", "--config", "/dev/null"});
    moveTo(pointer_);
    watcher_ = std::make_unique<testing::TrayWatcher>();
    if (!watcher_->appear()) {
        throw std::runtime_error("the bus has a tray already");
    }
    RunningVelmora::Options options;
    options.settings.clear();
    options.readyStatus = "Hover lookup off";
    options.environment["SPEECHD_ADDRESS"] = std::getenv("SPEECHD_ADDRESS");
    velmora_ = std::make_unique<RunningVelmora>(*desktop_, options);
    if (!testing::waitUntil([this] { return !watcher_->registered.isEmpty(); }, 60000)) {
        throw std::runtime_error("the tray hears of no item; velmora wrote: " + velmora_->log());
    }
    tray_ = std::make_unique<testing::TrayHost>(QStringLiteral("tray"),
                                                watcher_->registered.constFirst());
}

WalkThrough::~WalkThrough() {
    // No test asserts on speed, but whoever runs this one can see where the program was slow.
    std::istringstream lines(velmora_ ? velmora_->log() : std::string());
    for (std::string line; std::getline(lines, line);) {
        if (line.find("velmora.mainthread") != std::string::npos) {
            std::cout << "    " << name_ << ", after " << line << std::endl;
        }
    }
}

void WalkThrough::paintDesktop() {
    QImage picture(width, height, QImage::Format_RGB32);
    picture.fill(QColor(0x7c, 0x9b, 0xb8));
    const std::string file = (desktop_->folder() / "background.png").string();
    picture.save(QString::fromStdString(file));
    desktop_->run({"feh", "--no-fehbg", "--bg-fill", file});
}

VirtualDesktop::Window WalkThrough::window(const std::string& title) {
    auto found = desktop_->waitForWindow([&](const VirtualDesktop::Window& each) {
        return each.title == title && velmora_->process().owns(each.processId);
    });
    desktop_->settledScreenshot(found.client, std::chrono::seconds(10));
    return found;
}

bool WalkThrough::hasWindow(const std::string& title) const {
    const auto windows = velmora_->windows();
    return std::any_of(windows.begin(), windows.end(),
                       [&](const auto& each) { return each.title == title; });
}

bool WalkThrough::awaitNoWindow(const std::string& title) {
    return desktop_->waitUntil([&] { return !hasWindow(title); });
}

void WalkThrough::moveTo(Point place) {
    pointer_ = place;
    desktop_->movePointer(static_cast<int>(place.x), static_cast<int>(place.y));
}

void WalkThrough::act(const Rect& area, const std::function<void()>& action) {
    const QImage before = screenPicture(desktop_->screenshot(area));
    action();
    if (!desktop_->waitUntil([&] { return screenPicture(desktop_->screenshot(area)) != before; })) {
        throw std::runtime_error("nothing changes in the window");
    }
    // What the window goes on playing is no reason to wait for long.
    desktop_->settledScreenshot(area, std::chrono::seconds(10));
}

void WalkThrough::clickIn(const VirtualDesktop::Window& window, Point place) {
    const Point there{window.client.x + place.x, window.client.y + place.y};
    moveTo(there);
    desktop_->settledScreenshot(window.client, std::chrono::seconds(10));
    act(window.client,
        [&] { desktop_->click(static_cast<int>(there.x), static_cast<int>(there.y)); });
}

void WalkThrough::typeIn(const VirtualDesktop::Window& window, const std::string& keysym) {
    if (!desktop_->waitUntil([&] { return desktop_->focusedWindow() == window.id; })) {
        throw std::runtime_error("the window " + window.title + " does not have the focus");
    }
    act(window.client, [&] { desktop_->typeKey(keysym); });
}

std::string WalkThrough::diagnostics() const {
    return velmora_->command({"diagnostics"}).output;
}

bool WalkThrough::awaitDiagnostics(const std::string& line) {
    return desktop_->waitUntil([&] { return diagnostics().find(line) != std::string::npos; });
}

bool WalkThrough::awaitSetting(const std::string& line) {
    return desktop_->waitUntil([&] {
        std::ostringstream settings;
        settings << '\n' << std::ifstream(velmora_->settingsFile()).rdbuf();
        return settings.str().find("\n" + line + "\n") != std::string::npos;
    });
}

void WalkThrough::openReader() {
    const ReadProgram& reader = ReadProgram::named("chromium");
    std::vector<std::string> command = reader.prepare(*desktop_, text_);
    command.insert(command.begin() + 1, "--test-type");  // No notices of its own above the text.
    ChildProcess& process = desktop_->launch(std::move(command), reader.environment);
    const VirtualDesktop::Window window = desktop_->waitForWindowOf(process);
    desktop_->placeWindow(window.id, readerPlace);
    std::optional<std::vector<TextLine>> last;
    const bool found = desktop_->waitUntil([&] {
        const auto seen =
            findTextLines(desktop_->settledScreenshot(readerPlace), {readerPlace.x, readerPlace.y},
                          text_.lines().size(), SampleText::charactersPerLine);
        const bool same = seen && last && seen->front().ink == last->front().ink;
        last = seen;
        return same;
    });
    if (!found) {
        throw std::runtime_error("the browser does not show the text");
    }
    lines_ = *last;
}

std::vector<VirtualDesktop::Window> WalkThrough::panels() const {
    std::vector<VirtualDesktop::Window> result;
    for (const VirtualDesktop::Window& each : velmora_->windows()) {
        if (each.overrideRedirect) {
            result.push_back(each);
        }
    }
    return result;
}

nlohmann::json WalkThrough::hover(std::size_t line, std::size_t position) {
    const std::size_t before = velmora_->records().size();
    moveTo(lines_.at(line).middle(position));
    nlohmann::json record;
    desktop_->waitUntil(
        [&] {
            const auto records = velmora_->records();
            if (records.size() > before) {
                record = records.back();
            }
            return record.is_object() && record.at("event") == "lookup" && panels().size() >= 2;
        },
        std::chrono::seconds(20));
    desktop_->settledScreenshot({0, 0, width, height}, std::chrono::seconds(10));
    return record;
}

void WalkThrough::leave() {
    moveTo(blankPlace);
    if (!desktop_->waitUntil([this] { return panels().empty(); })) {
        throw std::runtime_error("the lookup stays on the screen");
    }
}

Rect WalkThrough::popover(const std::function<bool(const Rect&)>& wanted) {
    Rect frame;
    const bool found = desktop_->waitUntil([&] {
        for (const VirtualDesktop::Window& each : panels()) {
            // The highlight is the one that surrounds the pointer.
            if (!each.client.contains(pointer_) && wanted(each.client)) {
                frame = each.client;
                return true;
            }
        }
        return false;
    });
    if (!found) {
        throw std::runtime_error("the popover does not appear");
    }
    desktop_->settledScreenshot({0, 0, width, height}, std::chrono::seconds(10));
    return frame;
}

std::size_t WalkThrough::pixelsOf(const Rect& area, std::uint32_t color) {
    const Image picture = desktop_->settledScreenshot(area);
    std::size_t count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        count += static_cast<std::size_t>(
            std::count_if(picture.row(y), picture.row(y) + picture.width(),
                          [color](std::uint32_t pixel) { return close(pixel, color); }));
    }
    return count;
}

BusMenuNode WalkThrough::openMenu() {
    tray_->aboutToShow();
    tray_->event(0, "opened");
    return tray_->layout();
}

void WalkThrough::choose(const std::string& title) {
    const BusMenuNode menu = openMenu();
    const BusMenuNode* const entry = testing::TrayHost::find(menu, QString::fromStdString(title));
    if (entry == nullptr) {
        throw std::runtime_error("the menu has no entry " + title);
    }
    tray_->event(entry->id, "clicked");
    tray_->event(0, "closed");
}

void WalkThrough::keepPicture(const std::string& step) {
    std::cout << "    " << name_ << ": " << step << std::endl;
    if (!keepsPictures_) {
        return;
    }
    const std::filesystem::path folder = pictureFolder();
    std::filesystem::create_directories(folder);
    QImage picture = screenPicture(desktop_->screenshot());
    drawPointer(picture, pointer_);
    const std::string number = std::to_string(100 + ++pictures_).substr(1);
    const std::string file = (folder / (name_ + "-" + number + "-" + step + ".png")).string();
    if (!picture.save(QString::fromStdString(file))) {
        throw std::runtime_error("cannot write " + file);
    }
}

}  // namespace velmora::test
