// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextReader.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Velmora/Platform/Linux/AtSpi/AtSpiConstants.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiReply.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiRequest.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTerminal.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextGeometry.h"

namespace velmora {

namespace {

/// How much of a long value is read to both sides of where it is needed.
constexpr int stretchRadius = 512;
constexpr int greatestSelection = 20000;

/// A reply may hold two units for each character asked for, and Gecko a filler besides.
qsizetype unitLimit(int characters) {
    return qsizetype(characters) * 3 + 16;
}

bool isTerminal(const AtSpiElementState& state) {
    return state.role == static_cast<std::uint32_t>(AtSpiRole::terminal);
}

bool isPassword(const AtSpiElementState& state) {
    return state.role == static_cast<std::uint32_t>(AtSpiRole::passwordText);
}

}  // namespace

bool AtSpiTextReader::learn() {
    if (state_.isLearnt) {
        return state_.characterCount > 0;
    }
    const QList<QDBusMessage> replies = bus_.callAll(
        {atspirequest::interfaces(state_.object), atspirequest::role(state_.object)}, deadline_);
    // A password field or a terminal whose role came too late would be read as any other text.
    if (std::any_of(replies.begin(), replies.end(), atspireply::isTimeout)) {
        return false;
    }
    state_.role = atspireply::unsignedInteger(replies.at(1)).value_or(0);
    state_.isLearnt = true;
    // Passwords are nobody's reading matter.
    if (atspireply::offersText(replies.at(0)) && !isPassword(state_)) {
        const QDBusMessage count =
            bus_.call(atspirequest::characterCount(state_.object), deadline_);
        state_.characterCount = atspireply::integerProperty(count).value_or(-1);
        state_.isLearnt = !atspireply::isTimeout(count);
    }
    return state_.characterCount > 0;
}

bool AtSpiTextReader::load(int around) {
    if (state_.content) {
        return true;
    }
    if (!learn()) {
        return false;
    }
    const int count = state_.characterCount;
    const bool isWhole = count <= greatestWholeValue;
    const int from = isWhole ? 0 : std::clamp(around - stretchRadius, 0, count);
    const int to = isWhole ? count : std::min(from + 2 * stretchRadius, count);
    const std::optional<QString> raw = atspireply::text(
        bus_.call(atspirequest::text(state_.object, from, to), deadline_), unitLimit(to - from));
    if (!raw || raw->isEmpty()) {
        return false;
    }
    state_.content.emplace(*raw, from, state_.toolkit);
    return true;
}

std::optional<QString> AtSpiTextReader::wholeText() {
    if (!learn() || state_.characterCount > greatestWholeValue || !load(0)) {
        return std::nullopt;
    }
    const QString& text = state_.content->text();
    const bool onlyObjects = std::all_of(text.begin(), text.end(), [](QChar unit) {
        return unit == QChar(embeddedObject) || unit.isSpace();
    });
    if (onlyObjects) {
        return std::nullopt;
    }
    return state_.content->part(0, state_.content->end());
}

std::optional<std::int64_t> AtSpiTextReader::longLength() {
    if (!learn() || state_.characterCount <= greatestWholeValue) {
        return std::nullopt;
    }
    // Positions follow the toolkit's offsets but for the pairs within the stretch that was read.
    const std::int64_t pairs =
        state_.content ? state_.content->text().size() - state_.content->text().toUcs4().size() : 0;
    return state_.characterCount + (countsUtf16(state_.toolkit) ? 0 : pairs);
}

std::optional<QString> AtSpiTextReader::string(Utf16Range range) {
    if (range.location < 0 || range.length < 1 || range.length > greatestWholeValue ||
        !load(static_cast<int>(std::min<std::int64_t>(range.location, 1 << 30)))) {
        return std::nullopt;
    }
    const AtSpiTextContent& content = *state_.content;
    if (range.location < content.start() || range.location >= content.end()) {
        return std::nullopt;
    }
    return content.part(range.location, range.location + range.length);
}

std::optional<int> AtSpiTextReader::offsetAt(Point capture) {
    return isTerminal(state_) ? AtSpiTerminal(bus_, state_, deadline_).offsetAt(capture)
                              : AtSpiTextGeometry(bus_, state_, deadline_).offsetAt(capture);
}

std::optional<Utf16Range> AtSpiTextReader::rangeAt(Point capture) {
    if (!std::isfinite(capture.x) || !std::isfinite(capture.y) || !learn()) {
        return std::nullopt;
    }
    if (state_.characterCount <= greatestWholeValue && !load(0)) {
        return std::nullopt;
    }
    const std::optional<int> offset = offsetAt(capture);
    if (!offset || *offset >= state_.characterCount || !load(*offset)) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> position = state_.content->positionOf(*offset);
    if (!position || *position >= state_.content->end()) {
        return std::nullopt;
    }
    return Utf16Range{*position, state_.content->unitsAt(*position)};
}

std::optional<std::pair<int, int>> AtSpiTextReader::offsets(Utf16Range range) {
    if (range.location < 0 || range.length < 1 ||
        range.location > std::numeric_limits<std::int64_t>::max() - range.length ||
        !load(static_cast<int>(std::min<std::int64_t>(range.location, 1 << 30)))) {
        return std::nullopt;
    }
    const AtSpiTextContent& content = *state_.content;
    const std::optional<int> from = content.offsetOf(range.location);
    const std::optional<int> to = content.offsetOf(range.location + range.length);
    if (!from || !to || range.location >= content.end()) {
        return std::nullopt;
    }
    // Half of a pair stands for the whole.
    return std::pair{*from, std::max(*to, *from + 1)};
}

std::optional<Rect> AtSpiTextReader::bounds(Utf16Range range) {
    const auto found = offsets(range);
    if (!found) {
        return std::nullopt;
    }
    const auto [from, to] = *found;
    const std::optional<Rect> target =
        isTerminal(state_) ? AtSpiTerminal(bus_, state_, deadline_).bounds(from, to)
                           : AtSpiTextGeometry(bus_, state_, deadline_).bounds(from, to);
    if (!target) {
        return std::nullopt;
    }
    const Rect capture = state_.space.captureFromTarget(*target);
    return capture.isFinite() && !capture.isEmpty() ? std::optional(capture) : std::nullopt;
}

std::optional<std::pair<int, int>> AtSpiTextReader::reportedSelection() {
    const QList<QDBusMessage> replies = bus_.callAll(
        {atspirequest::selectionCount(state_.object), atspirequest::selection(state_.object, 0)},
        deadline_);
    const std::optional<std::pair<int, int>> range = atspireply::integerPair(replies.at(1));
    if (atspireply::integer(replies.at(0)).value_or(0) < 1 || !range) {
        return std::nullopt;
    }
    return std::pair{std::min(range->first, range->second), std::max(range->first, range->second)};
}

std::optional<std::pair<int, int>> AtSpiTextReader::selectedOffsets() {
    if (!learn()) {
        return std::nullopt;
    }
    std::optional<std::pair<int, int>> range = reportedSelection();
    if (range && range->first >= 0 && isTerminal(state_)) {
        // Both ends may stand for all that is behind the middle of one row.
        range = AtSpiTerminal(bus_, state_, deadline_).selection(range->first, range->second);
    } else if (range && range->first >= 0 && range->first < range->second &&
               state_.toolkit == AtSpiToolkit::chromium) {
        range = webSelection(*range);
    }
    if (!range || range->first < 0 || range->first >= range->second ||
        range->second > state_.characterCount || range->second - range->first > greatestSelection) {
        return std::nullopt;
    }
    return range;
}

std::optional<std::pair<int, int>> AtSpiTextReader::webSelection(std::pair<int, int> reported) {
    // Chromium takes pairs out of its count twice when it tells of a selection, and once, as it
    // should, when it tells of the caret at one end of it.
    if (!load(reported.first)) {
        return std::nullopt;
    }
    const auto restored = [this](int offset) {
        const auto position = state_.content->positionOf(offset);
        return position ? static_cast<int>(*position) : -1;
    };
    const std::pair corrected{restored(reported.first), restored(reported.second)};
    if (corrected == reported) {
        return reported;
    }
    const int caret =
        atspireply::integerProperty(bus_.call(atspirequest::caretOffset(state_.object), deadline_))
            .value_or(-1);
    if (caret == corrected.first || caret == corrected.second) {
        return corrected;
    }
    return caret == reported.first || caret == reported.second ? std::optional(reported)
                                                               : std::nullopt;
}

std::optional<Utf16Range> AtSpiTextReader::selectedRange() {
    const auto selected = selectedOffsets();
    if (!selected || !load(selected->first)) {
        return std::nullopt;
    }
    const auto from = state_.content->positionOf(selected->first);
    const auto to = state_.content->positionOf(selected->second);
    if (!from || !to || *to <= *from) {
        return std::nullopt;
    }
    return Utf16Range{*from, *to - *from};
}

std::optional<QString> AtSpiTextReader::selectedText() {
    const auto selected = selectedOffsets();
    if (!selected) {
        return std::nullopt;
    }
    const auto [from, to] = *selected;
    const std::optional<QString> raw = atspireply::text(
        bus_.call(atspirequest::text(state_.object, from, to), deadline_), unitLimit(to - from));
    if (!raw || raw->isEmpty()) {
        return std::nullopt;
    }
    const AtSpiTextContent content(*raw, from, state_.toolkit);
    return content.part(content.start(), content.end());
}

}  // namespace velmora
