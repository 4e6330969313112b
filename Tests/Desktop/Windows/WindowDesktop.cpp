// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Windows/WindowDesktop.h"

#include <QGuiApplication>
#include <filesystem>
#include <string>

namespace velmora::test {

namespace {

VirtualDesktop* theDesktop = nullptr;

}  // namespace

VirtualDesktop& WindowDesktop::get() {
    return *theDesktop;
}

void WindowDesktop::set(VirtualDesktop* desktop) {
    theDesktop = desktop;
}

bool WindowDesktop::until(const std::function<bool()>& condition) {
    constexpr std::chrono::seconds patience{20};
    return get().waitUntil(
        [&condition] {
            QGuiApplication::processEvents();
            // not.
            return condition();
        },
        patience);
}

QColor WindowDesktop::pixel(int x, int y) {
    const Image image = get().screenshot({static_cast<double>(x), static_cast<double>(y), 1, 1});
    return QColor::fromRgb(image.row(0)[0]);
}

void WindowDesktop::keepPicture(const std::string& name) {
    const std::filesystem::path folder = VELMORA_BUILD_FOLDER "/windows";
    std::filesystem::create_directories(folder);
    VirtualDesktop::savePng(get().screenshot(), folder / (name + ".png"));
}

}  // namespace velmora::test
