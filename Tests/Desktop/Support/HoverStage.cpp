// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/HoverStage.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "VelmoraCore/CharacterText.h"

namespace velmora::test {

namespace {

using Json = nlohmann::json;

/// Points by which the highlight keeps off the characters.
constexpr double outset = 3;

Json part(const Json& record, const char* key) {
    return record.is_object() && record.contains(key) ? record.at(key) : Json();
}

}  // namespace

std::string Hover::word() const {
    const Json match = part(record, "match");
    return match.is_object() ? match.at("matchedWord").get<std::string>() : std::string();
}

std::string Hover::text() const {
    const Json probe = part(record, "probe");
    return probe.is_object() ? probe.at("text").get<std::string>() : std::string();
}

long long Hover::offset() const {
    const Json probe = part(record, "probe");
    return probe.is_object() ? probe.at("hoveredCharacterOffset").get<long long>() : -1;
}

std::string Hover::hoveredCharacter() const {
    const CharacterText characters(text());
    if (offset() < 0 || static_cast<std::size_t>(offset()) >= characters.count()) {
        return {};
    }
    return std::string(characters[static_cast<std::size_t>(offset())]);
}

HoverStage::HoverStage(const ReadProgram& program) : HoverStage(program, Options{}) {}

HoverStage::HoverStage(const ReadProgram& program, const Options& options)
    : desktop_(options.desktop),
      screens_(
          {static_cast<double>(options.desktop.width), static_cast<double>(options.desktop.height)},
          options.monitors),
      area_(options.window),
      shown_(program) {
    desktop_.enter();
    if (options.compositor) {
        desktop_.launch({"picom", "--backend", "xrender", "--config", "/dev/null"});
    }
    screens_.divide(desktop_);
    lines_ = show(program, area_, &program_);
    windowId_ = windowOf(*program_).id;
    keepPicture();
    RunningVelmora::Options velmora = options.velmora;
    velmora.environment.merge(screens_.environment());
    velmora_ = std::make_unique<RunningVelmora>(desktop_, velmora);
}

HoverStage::~HoverStage() = default;

std::vector<TextLine> HoverStage::show(const ReadProgram& program, const Rect& area,
                                       ChildProcess** started) {
    if (!program.isInstalled()) {
        throw std::runtime_error(program.name + " is not installed");
    }
    // A program under the pointer may show tooltips.
    desktop_.movePointer(2, 2);
    ChildProcess& process = desktop_.launch(program.prepare(desktop_, text_), program.environment);
    if (started != nullptr) {
        *started = &process;
    }
    const VirtualDesktop::Window window = windowOf(process);
    desktop_.settleWindow(process, window.id, area);
    try {
        awaitLines(program, area);
        // What a program does after it showed the text first moves it about, and it may not tell
        // of its elements before.
        desktop_.settleWindow(process, window.id, area);
        return awaitLines(program, area);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(program.name + ": " + error.what());
    }
}

VirtualDesktop::Window HoverStage::windowOf(const ChildProcess& program) {
    return desktop_.waitForWindow([&program](const VirtualDesktop::Window& window) {
        if (window.client.width <= 40 || window.client.height <= 20) {
            return false;
        }
        // Some programs do not say which windows are theirs.
        return window.processId > 0 ? program.owns(window.processId)
                                    : window.title.find("sample.") != std::string::npos;
    });
}

std::vector<TextLine> HoverStage::awaitLines(const ReadProgram& program, const Rect& area) {
    std::optional<std::vector<TextLine>> last;
    const bool found = desktop_.waitUntil([&] {
        Image picture = desktop_.settledScreenshot(area);
        if (program.textOf != nullptr) {
            picture = program.textOf(picture);
        }
        const auto seen = findTextLines(picture, {area.x, area.y}, text_.lines().size(),
                                        SampleText::charactersPerLine);
        // Programs go on laying themselves out after they showed the text first.
        const bool same = seen && last && seen->front().ink == last->front().ink;
        last = seen;
        return same;
    });
    if (!found) {
        VirtualDesktop::savePng(desktop_.screenshot(), VELMORA_BUILD_FOLDER "/no-lines.png");
        throw std::runtime_error(
            "the text does not appear (no-lines.png in the build folder shows the screen)");
    }
    return *last;
}

void HoverStage::keepPicture() {
    clean_ = desktop_.screenshot();
}

std::optional<Rect> HoverStage::glyphs(std::size_t line, std::size_t first,
                                       std::size_t count) const {
    const Rect area = lines_.at(line).ink.grownBy(8, 0);
    Image picture = clean_.cropped(static_cast<int>(area.x), static_cast<int>(area.y),
                                   static_cast<int>(area.width), static_cast<int>(area.height));
    if (shown_.textOf != nullptr) {
        picture = shown_.textOf(picture);
    }
    return inkInside(picture, {area.x, area.y}, lines_.at(line).cells(first, count));
}

VirtualDesktop::Window HoverStage::window() const {
    for (const VirtualDesktop::Window& each : desktop_.windows()) {
        if (each.id == windowId_) {
            return each;
        }
    }
    throw std::runtime_error("the program's window is gone");
}

Hover HoverStage::hover(std::size_t line, std::size_t position) {
    return hover(lines_.at(line).middle(position));
}

Hover HoverStage::hover(Point place) {
    Hover result;
    result.pointer = place;
    const Point rested = screens_.points(place);
    const std::size_t before = velmora_->records().size();
    if (before == 0) {
        noteOtherWindows();
    }
    const std::size_t momentsBefore = velmora_->moments().size();
    desktop_.movePointer(static_cast<int>(place.x), static_cast<int>(place.y));
    desktop_.waitUntil(
        [&] {
            const std::vector<Json> records = velmora_->records();
            for (std::size_t i = before; i < records.size(); ++i) {
                const Json& cursor = records[i].at("cursorPoint");
                if (std::abs(cursor.at("x").get<double>() - rested.x) < 1.5 &&
                    std::abs(cursor.at("y").get<double>() - rested.y) < 2.5) {
                    result.record = records[i];
                }
            }
            return !result.record.is_null();
        },
        std::chrono::seconds(20));
    if (part(result.record, "event") == "lookup") {
        desktop_.waitUntil(
            [&] {
                collectWindows(result);
                return result.popover && result.highlight;
            },
            std::chrono::seconds(10));
        desktop_.waitUntil(
            [&] {
                const auto moments = velmora_->moments();
                std::optional<std::int64_t> dwell;
                int captures = 0;
                for (std::size_t i = momentsBefore; i < moments.size(); ++i) {
                    if (moments[i].name == "dwell") {
                        dwell = moments[i].microseconds;
                        captures = 0;
                    } else if (moments[i].name == "captured") {
                        ++captures;
                    } else if (moments[i].name == "painted" && dwell) {
                        result.milliseconds =
                            static_cast<double>(moments[i].microseconds - *dwell) / 1000.0;
                        result.captures = captures;
                    }
                }
                return result.milliseconds.has_value();
            },
            std::chrono::seconds(10));
    }
    return result;
}

void HoverStage::noteOtherWindows() {
    otherWindows_.clear();
    for (const VirtualDesktop::Window& window : velmora_->windows()) {
        otherWindows_.insert(window.id);
    }
}

void HoverStage::collectWindows(Hover& hover) const {
    hover.highlight.reset();
    hover.popover.reset();
    const Json anchor = part(hover.record, "anchorRect");
    if (!anchor.is_object()) {
        return;
    }
    const Rect expected = screens_.pixels(
        Rect{anchor.at("x"), anchor.at("y"), anchor.at("width"), anchor.at("height")}.grownBy(
            outset));
    const double scale = screens_.monitorAt(hover.pointer).scale;
    for (const VirtualDesktop::Window& window : velmora_->windows()) {
        if (otherWindows_.contains(window.id)) {
            continue;
        }
        const Rect& frame = window.client;
        const bool isHighlight = std::abs(frame.midX() - expected.midX()) < 2 * scale &&
                                 std::abs(frame.midY() - expected.midY()) < 2 * scale &&
                                 std::abs(frame.width - expected.width) < 3 * scale;
        (isHighlight ? hover.highlight : hover.popover) = frame;
    }
}

Rect HoverStage::outlined(const Hover& hover) const {
    return hover.highlight
               ? hover.highlight->grownBy(-outset * screens_.monitorAt(hover.pointer).scale)
               : Rect{};
}

bool HoverStage::waitForWindows(std::size_t count) {
    return desktop_.waitUntil([&] { return velmora_->windows().size() == count; },
                              std::chrono::seconds(20));
}

std::string HoverStage::explain(Point place) const {
    return velmora_
        ->command({"probe", "--explain", "--at",
                   std::to_string(static_cast<int>(place.x)) + "," +
                       std::to_string(static_cast<int>(place.y))})
        .output;
}

Point HoverStage::blankPlace() const {
    // Not below the text either, where the dictionary opens.
    return {std::floor(area_.maxX() - 150), std::floor(lines_.back().ink.maxY() + 40)};
}

void HoverStage::leave() {
    const Point place = blankPlace();
    desktop_.movePointer(static_cast<int>(place.x), static_cast<int>(place.y));
    if (!waitForWindows(0)) {
        throw std::runtime_error("the lookup stays on the screen");
    }
}

void HoverStage::moveWindow(const Rect& window) {
    leave();
    area_ = window;
    desktop_.placeWindow(windowId_, area_);
    lines_ = awaitLines(shown_, area_);
    keepPicture();
}

void HoverStage::select(std::size_t line, std::size_t first, std::size_t last) {
    const Rect from = lines_.at(line).cells(first);
    const Rect to = lines_.at(line).cells(last);
    const int y = static_cast<int>(from.midY());
    const int begin = static_cast<int>(std::lround(from.minX())) + 1;
    const int end = static_cast<int>(std::lround(to.maxX())) - 1;
    desktop_.movePointer(begin, y);
    desktop_.pressButton(1);
    // A steady hand: programs begin to select after some motion.
    for (int x = begin; x < end; x += 4) {
        desktop_.movePointer(x, y);
    }
    desktop_.movePointer(end, y);
    desktop_.releaseButton(1);
    // No hand goes on within a millisecond; who asks late where the pointer is would miss the way.
    desktop_.settledScreenshot(lines_.at(line).ink);
}

}  // namespace velmora::test
