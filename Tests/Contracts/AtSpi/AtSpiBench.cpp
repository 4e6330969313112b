// SPDX-License-Identifier: MIT
#include "Tests/Contracts/AtSpi/AtSpiBench.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiSystem.h"
#include "Velmora/Platform/LinuxX11/X11PrimarySelection.h"
#include "Velmora/Platform/LinuxX11/X11WindowLocator.h"

namespace velmora::test {

const char* const contractText =
    "我们在学习中文词典，今天天气很好。\n"
    "😀😀汉字和研究生命　国　起源\n"
    "plain words 词典 here\n";

namespace {

// What is told of a text's place holds once it did not change for so long.
constexpr auto steadyFor = std::chrono::milliseconds(200);

/// One screen without scaling, until a test says otherwise.
class GivenScreens : public ScreenGeometrySource {
  public:
    ScreenGeometry current() const override {
        const std::lock_guard<std::mutex> lock(mutex_);
        return geometry_;
    }
    void set(ScreenGeometry geometry) {
        const std::lock_guard<std::mutex> lock(mutex_);
        geometry_ = std::move(geometry);
    }

  private:
    mutable std::mutex mutex_;
    ScreenGeometry geometry_{{{1, {0, 0, 1600, 1000}, 1, {0, 0, 1600, 1000}}}};
};

}  // namespace

struct AtSpiBench::Backend {
    GivenScreens screen;
    X11WindowLocator locator{X11ClientRange{}};
    std::shared_ptr<AtSpiService> service = std::make_shared<AtSpiService>();
    X11PrimarySelection selection;
    std::atomic<bool> offersSelections = true;
    AtSpiSystem system{service, locator, screen,
                       [this](std::int64_t processId, std::chrono::milliseconds patience) {
                           return offersSelections ? selection.textOf(processId, patience)
                                                   : std::nullopt;
                       }};
};

AtSpiBench::AtSpiBench() : desktop_(std::make_unique<VirtualDesktop>()) {
    desktop_->enter();
    backend_ = std::make_unique<Backend>();
    if (!desktop_->waitUntil([this] { return isTrusted(); })) {
        throw std::runtime_error("the accessibility bus was not reached");
    }
}

AtSpiBench::~AtSpiBench() {
    backend_.reset();
}

AtSpiSystem& AtSpiBench::system() {
    return backend_->system;
}

bool AtSpiBench::isTrusted() const {
    return backend_->service->grant().isGiven();
}

void AtSpiBench::start(std::vector<std::string> command, const ChildProcess::Environment& extra) {
    program_ = &desktop_->launch(std::move(command), extra);
    window_ = desktop_->waitForWindowOf(*program_);
    moveWindow({200, 100, 1000, 700});
}

void AtSpiBench::offerSelections(bool offered) {
    backend_->offersSelections = offered;
}

void AtSpiBench::setScreens(ScreenGeometry geometry) {
    backend_->screen.set(std::move(geometry));
}

void AtSpiBench::moveWindow(const Rect& client) {
    looks_.clear();
    desktop_->settleWindow(*program_, window_.id, client);
    desktop_->settledScreenshot({0, 0, 1600, 1000});
    for (const VirtualDesktop::Window& window : desktop_->windows()) {
        if (window.id == window_.id) {
            window_ = window;
        }
    }
}

AccessibilityElement::Pointer AtSpiBench::findNow(const std::string& text) {
    const Rect area = window_.client;
    for (double y = area.minY() + 5; y < area.maxY(); y += 14) {
        for (double x = area.minX() + 30; x < area.maxX(); x += 120) {
            const AccessibilityElement::Pointer element = system().elementAtPosition({x, y});
            const std::optional<std::string> value = element ? element->value() : std::nullopt;
            if (value && value->find(text) != std::string::npos) {
                return element;
            }
        }
    }
    return nullptr;
}

AtSpiBench::Look AtSpiBench::look(const std::string& text,
                                  const AccessibilityElement::Pointer& element) {
    const std::int64_t location = element ? positionIn(*element, text) : -1;
    return location < 0 ? Look{} : Look{element, element->boundsForRange({location, 1})};
}

AccessibilityElement::Pointer AtSpiBench::elementShowing(const std::string& text) {
    // Asked for where it was last, so that its reads have the time of a whole query.
    const auto again = [this](const Look& last) {
        const auto hit = last.cell
                             ? system().elementAtPosition({last.cell->midX(), last.cell->midY()})
                             : nullptr;
        return hit && hit->equals(*last.element) ? hit : nullptr;
    };
    Look& last = looks_[text];
    auto since = std::chrono::steady_clock::now();
    desktop_->waitUntil([&] {
        Look next = look(text, again(last));
        if (!next.element) {
            next = look(text, findNow(text));
        }
        const auto now = std::chrono::steady_clock::now();
        const bool isSame = next.element && last.element && next.element->equals(*last.element) &&
                            next.cell == last.cell;
        since = isSame ? since : now;
        last = std::move(next);
        return isSame && now - since >= steadyFor;
    });
    const AccessibilityElement::Pointer fresh = again(last);
    return fresh ? fresh : last.element;
}

std::optional<Rect> AtSpiBench::ink(const Rect& area) {
    const Rect part = area.integral();
    const Image image = desktop_->screenshot(part);
    std::map<std::uint32_t, int> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ++colours[image.row(y)[x]];
        }
    }
    const auto background = std::max_element(colours.begin(), colours.end(),
                                             [](auto& a, auto& b) { return a.second < b.second; });
    if (background == colours.end()) {
        return std::nullopt;
    }
    const auto channel = [](std::uint32_t colour, int shift) {
        return static_cast<int>((colour >> shift) & 0xFF);
    };
    std::optional<Rect> result;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            int difference = 0;
            for (const int shift : {0, 8, 16}) {
                difference +=
                    std::abs(channel(image.row(y)[x], shift) - channel(background->first, shift));
            }
            if (difference > 150) {
                const Rect pixel{part.x + x, part.y + y, 1, 1};
                result = result ? result->united(pixel) : pixel;
            }
        }
    }
    return result;
}

void AtSpiBench::drag(const Rect& from, const Rect& to) {
    // A steady hand: programs start a selection only after some motion.
    const int y = static_cast<int>(from.midY());
    const int begin = static_cast<int>(from.minX() + 1);
    const int end = static_cast<int>(to.maxX() - 1);
    desktop_->movePointer(begin, y);
    desktop_->pressButton(1);
    for (int x = begin; x < end; x += 4) {
        desktop_->movePointer(x, y);
    }
    desktop_->movePointer(end, y);
    desktop_->releaseButton(1);
}

void AtSpiBench::saveScreenshot(const std::string& name) {
    VirtualDesktop::savePng(desktop_->screenshot(),
                            std::string(VELMORA_BUILD_FOLDER) + "/" + name + ".png");
}

std::int64_t positionIn(const AccessibilityElement& element, const std::string& text) {
    return QString::fromStdString(element.value().value_or(""))
        .indexOf(QString::fromStdString(text));
}

std::string stringAt(const AccessibilityElement& element, std::int64_t location,
                     std::int64_t length) {
    return element.stringForRange({location, length}).value_or("(nothing)");
}

}  // namespace velmora::test
