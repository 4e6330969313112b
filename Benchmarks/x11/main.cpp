// SPDX-License-Identifier: MIT
// Times what every hover asks of the X server, on a private desktop with some real windows: the
// window under the pointer, the one with the focus, and a picture of the pointer's surroundings.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <vector>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"
#include "Velmora/Platform/LinuxX11/X11WindowLocator.h"

namespace {

using namespace velmora;

class OneScreen : public ScreenGeometrySource {
  public:
    ScreenGeometry current() const override {
        const Rect whole{0, 0, 1600, 1000};
        return ScreenGeometry({{1, whole, 1, whole}});
    }
};

struct Figures {
    double median = 0;
    double p95 = 0;
};

Figures measured(const std::function<bool()>& call) {
    constexpr int rounds = 400;
    std::vector<double> milliseconds;
    for (int i = 0; i < rounds; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        if (!call()) {
            throw std::runtime_error("a question to the X server has no answer");
        }
        milliseconds.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
                .count());
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    return {milliseconds[rounds / 2], milliseconds[rounds * 95 / 100]};
}

void print(const char* name, const Figures& figures) {
    std::printf("| %s | %.3f ms | %.3f ms |\n", name, figures.median, figures.p95);
}

int run() {
    test::VirtualDesktop desktop;
    desktop.enter();
    for (int i = 0; i < 4; ++i) {
        test::ChildProcess& editor = desktop.launch({"mousepad", "--disable-server"});
        const auto window = desktop.waitForWindowOf(editor);
        desktop.placeWindow(window.id, {100.0 + 60 * i, 100.0 + 40 * i, 900, 600});
        desktop.awaitRest(editor);
    }
    const OneScreen geometry;
    const X11ClientRange application;
    X11WindowLocator locator(application, desktop.display());
    X11ScreenCapture capture(geometry, application, desktop.display());
    std::puts("| question | median | p95 |\n|---|--:|--:|");
    print("window under the pointer", measured([&] {
              return locator.topmostWindowAt({600, 500}).has_value();
          }));
    print("window with the focus", measured([&] { return locator.focusedWindow().has_value(); }));
    print("picture of 520 x 160", measured([&] {
              return capture.capture(1, {340, 420, 520, 160}).has_value();
          }));
    print("picture of the whole screen", measured([&] {
              return capture.capture(1, {0, 0, 1600, 1000}).has_value();
          }));
    return EXIT_SUCCESS;
}

}  // namespace

int main() {
    try {
        return run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchmark_x11: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
