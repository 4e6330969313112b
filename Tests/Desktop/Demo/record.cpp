// SPDX-License-Identifier: MIT
// Films the program at work on a private virtual desktop, for the animation that the onboarding
// window plays.
//
//   velmora_demo_recorder FOLDER
//
// leaves the frames and the list of their times in FOLDER. Everything on the screen is what our
// program and a browser draw while a real pointer moves over it; the arrow and the key that is held
// are drawn in, since no capture of a screen has them.
#include <QGuiApplication>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "Tests/Desktop/Demo/DemoFilm.h"
#include "Tests/Desktop/Demo/ScreenPicture.h"
#include "Tests/Desktop/Support/RunningVelmora.h"

namespace velmora::test {
namespace {

using Clock = std::chrono::steady_clock;

// Twice the points of the frame that plays it, and a scale between: whole cards fit into it and
// stay sharp on every screen.
constexpr int width = 1040;
constexpr int height = 606;
constexpr double scale = 1.4;
// Whole frames of ffmpeg's 25 per second.
constexpr double frameSeconds = 0.04;
constexpr double dwellSeconds = 0.24;

const std::string page =
    "<!doctype html><meta charset=utf-8><title>Velmora</title><style>"
    "html{background:#fff;overflow:hidden;cursor:none}"
    "body{margin:78px 0 0 120px;color:#1c1c1f;font-family:'Noto Sans CJK SC',sans-serif}"
    "h1{font-size:52px;line-height:64px;font-weight:500;margin:0}"
    "p{font-size:33px;line-height:56px;margin:58px 0 0;width:860px;color:#2c2c31}"
    "</style><h1>你知道吗？</h1>"
    "<p>想要学习一门语言，最好的办法就是每天读一点。</p>"
    "<p>遇到不认识的词语，把鼠标停在上面，意思就出来了。</p>";

/// Something of the machine's own interfered; the take is worthless.
struct SpoiltTake : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void say(const std::string& line) {
    std::cerr << "    " << line << std::endl;
}

VirtualDesktop::Options options() {
    VirtualDesktop::Options options;
    options.width = width;
    options.height = height;
    return options;
}

class Studio {
  public:
    Studio() {
        desktop_.launch({"picom", "--backend", "xrender", "--config", "/dev/null"});
        openPage();
        RunningVelmora::Options velmora;
        velmora.environment = {{"QT_SCALE_FACTOR", std::to_string(scale)}};
        velmora_ = std::make_unique<RunningVelmora>(desktop_, velmora);
        desktop_.waitUntil([this] { return velmora_->windows().empty(); });
    }

    /// Where the pointer rests on a word of the text, in pixels.
    Point find(const std::string& word) {
        for (int y = probeStep; y < height; y += probeStep) {
            if (const auto place = wordInLine(y, word)) {
                return *place;
            }
        }
        VirtualDesktop::savePng(desktop_.screenshot(), VELMORA_BUILD_FOLDER "/no-word.png");
        throw std::runtime_error("the page does not show " + word +
                                 " (no-word.png in the build folder shows the screen)");
    }

    void film(DemoFilm& film) {
        film_ = &film;
        film.clear();
        pointer_ = home;
        desktop_.movePointer(static_cast<int>(home.x), static_cast<int>(home.y));
        awaitWindows(0);
        screen_ = settled();
        clean_ = screen_;
        film.add(screen_, pointer_, {}, 0.48);
        glide(study_, 0.88);
        appear(1.6);
        glide(know_, 0.72);
        appear(1.0);
        shift(3.2);
        glide(home, 0.88);
        if (screen_ != clean_) {
            throw SpoiltTake("the lookup stays");
        }
        film.add(screen_, pointer_, {}, 0.4);
    }

    void findWords() {
        know_ = find("知道");
        study_ = find("学习");
    }

  private:
    static constexpr Point home{900, 420};
    static constexpr int probeColumn = 138;
    static constexpr int probeStep = 20;

    void openPage() {
        const std::string file = desktop_.writeFile("page.html", page).string();
        ChildProcess& browser = desktop_.launch(
            {"chromium", "--force-renderer-accessibility", "--no-sandbox", "--test-type",
             "--disable-gpu", "--no-first-run", "--kiosk", "--disable-background-networking",
             "--disable-component-update", "--disable-sync", "--disable-lcd-text",
             "--hide-scrollbars", "--user-data-dir=" + (desktop_.folder() / "browser").string(),
             "--app=file://" + file});
        const std::uint64_t window = desktop_.waitForWindowOf(browser).id;
        const bool fills = desktop_.waitUntil([&] {
            for (const VirtualDesktop::Window& each : desktop_.windows()) {
                if (each.id == window && each.client == Rect{0, 0, width, height}) {
                    return true;
                }
            }
            return false;
        });
        if (!fills) {
            throw std::runtime_error("the browser does not fill the screen");
        }
        desktop_.settledScreenshot({0, 0, width, height});
    }

    /// Asks the program for the text at the beginning of a line and counts from there: all
    /// characters are equally wide.
    std::optional<Point> wordInLine(int y, const std::string& word) {
        const auto [status, output] = velmora_->command(
            {"probe", "--json", "--at", std::to_string(probeColumn) + "," + std::to_string(y)});
        if (status != 0) {
            return std::nullopt;
        }
        const nlohmann::json probe = nlohmann::json::parse(output);
        const std::string seen = probe.at("text");
        const std::size_t at = seen.find(word);
        const nlohmann::json& cell = probe.at("anchorRect");
        if (at == std::string::npos || !cell.is_object()) {
            return std::nullopt;
        }
        constexpr double bytes = 3;  // Of every character of the text.
        const double cells =
            static_cast<double>(at) / bytes - probe.at("hoveredCharacterOffset").get<double>();
        const double pitch = cell.at("width");
        // Where the word's two characters meet, and a little down.
        return Point{cell.at("x").get<double>() + (cells + 0.9) * pitch,
                     cell.at("y").get<double>() + 0.62 * cell.at("height").get<double>()};
    }

    QImage capture() const { return screenPicture(desktop_.screenshot()); }
    QImage settled() { return screenPicture(desktop_.settledScreenshot({0, 0, width, height})); }

    void awaitWindows(std::size_t count) {
        if (!desktop_.waitUntil([&] { return velmora_->windows().size() == count; },
                                std::chrono::seconds(10))) {
            throw SpoiltTake("there are " + std::to_string(velmora_->windows().size()) +
                             " windows instead of " + std::to_string(count));
        }
    }

    /// What the screen shows now; where it is just changing, what it shows when it is done.
    QImage current() const {
        QImage now = capture();
        while (now != screen_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            QImage next = capture();
            if (next == now) {
                return now;
            }
            now = std::move(next);
        }
        return screen_;
    }

    /// Moves the pointer there as a hand would: slow at both ends, on a slight curve.
    void glide(Point to, double seconds) {
        const Point from = pointer_;
        const std::size_t before = velmora_->records().size();
        const int steps = static_cast<int>(std::lround(seconds / frameSeconds));
        const double bend = 0.08;
        const Point side{(to.y - from.y) * bend, (from.x - to.x) * bend};
        for (int i = 1; i <= steps; ++i) {
            const auto due = Clock::now() + std::chrono::duration<double>(frameSeconds);
            const double t = static_cast<double>(i) / steps;
            const double eased = t * t * t * (10 + t * (6 * t - 15));
            const double bulge = 4 * eased * (1 - eased);
            pointer_ = {from.x + (to.x - from.x) * eased + side.x * bulge,
                        from.y + (to.y - from.y) * eased + side.y * bulge};
            desktop_.movePointer(static_cast<int>(std::lround(pointer_.x)),
                                 static_cast<int>(std::lround(pointer_.y)));
            std::this_thread::sleep_until(due);
            screen_ = current();
            film_->add(screen_, pointer_, {}, frameSeconds);
        }
        const std::vector<nlohmann::json> records = velmora_->records();
        for (std::size_t i = before; i < records.size(); ++i) {
            const Point cursor{records[i].at("cursorPoint").at("x").get<double>() * scale,
                               height - records[i].at("cursorPoint").at("y").get<double>() * scale};
            if (!near(cursor, from) && !near(cursor, to)) {
                throw SpoiltTake("the pointer was held up on its way");
            }
        }
    }

    /// The last steps of a move are so small that the pointer counts as resting.
    static bool near(Point a, Point b) { return std::hypot(a.x - b.x, a.y - b.y) < 12; }

    /// Waits for the lookup where the pointer rests.
    void appear(double seconds) {
        if (velmora_->windows().empty()) {
            film_->add(screen_, pointer_, {}, dwellSeconds);
            if (!desktop_.waitUntil([this] { return !velmora_->windows().empty(); },
                                    std::chrono::seconds(10))) {
                throw SpoiltTake("no lookup appears");
            }
        }
        screen_ = settled();
        film_->add(screen_, pointer_, {}, seconds);
    }

    void awaitChange() {
        const QImage before = screen_;
        if (!desktop_.waitUntil([&] { return capture() != before; }, std::chrono::seconds(10))) {
            throw SpoiltTake("no dictionary appears");
        }
        screen_ = settled();
    }

    void shift(double seconds) {
        film_->add(screen_, pointer_, "Shift", 0.16);
        desktop_.pressKey("Shift_L");
        awaitChange();
        film_->add(screen_, pointer_, "Shift", 0.88);
        desktop_.releaseKey("Shift_L");
        film_->add(screen_, pointer_, {}, seconds - 0.88);
    }

    VirtualDesktop desktop_{options()};
    std::unique_ptr<RunningVelmora> velmora_;
    DemoFilm* film_ = nullptr;
    Point pointer_ = home;
    Point know_;
    Point study_;
    QImage screen_;
    QImage clean_;
};

void record(const std::filesystem::path& folder) {
    say("Starting a private desktop, a browser and Velmora");
    Studio studio;
    studio.findWords();
    DemoFilm film(scale);
    constexpr int takes = 8;
    for (int take = 1;; ++take) {
        try {
            say("Filming");
            studio.film(film);
            break;
        } catch (const SpoiltTake& spoilt) {
            say(std::string("Once more: ") + spoilt.what());
            if (take == takes) {
                throw;
            }
        }
    }
    film.write(folder);
    say(std::to_string(film.frameCount()) + " frames, " + std::to_string(film.seconds()) + " s");
}

}  // namespace
}  // namespace velmora::test

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: velmora_demo_recorder FOLDER\n", stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    try {
        velmora::test::record(arguments[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "velmora_demo_recorder: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
