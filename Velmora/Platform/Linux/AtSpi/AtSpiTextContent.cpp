// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextContent.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr QChar filler(0xFEFF);
constexpr QChar replacement(0xFFFD);

}  // namespace

AtSpiTextContent::AtSpiTextContent(const QString& raw, int start, AtSpiToolkit toolkit)
    : start_(start) {
    const bool countsUnits = countsUtf16(toolkit);
    int offset = start;
    text_.reserve(raw.size());
    for (qsizetype i = 0; i < raw.size(); ++i) {
        const bool isPair =
            raw.at(i).isHighSurrogate() && i + 1 < raw.size() && raw.at(i + 1).isLowSurrogate();
        text_.append(raw.at(i));
        offsets_.push_back(offset);
        if (isPair) {
            offset += countsUnits ? 1 : 0;
            ++i;
            text_.append(raw.at(i));
            offsets_.push_back(offset);
            if (toolkit == AtSpiToolkit::gecko && i + 1 < raw.size() && raw.at(i + 1) == filler) {
                ++i;
                ++offset;
                offsets_.back() = offset;
            }
        }
        ++offset;
    }
    offsets_.push_back(offset);
}

bool AtSpiTextContent::startsPair(qsizetype index) const {
    return text_.at(index).isHighSurrogate() && index + 1 < text_.size() &&
           text_.at(index + 1).isLowSurrogate();
}

std::optional<int> AtSpiTextContent::offsetOf(std::int64_t position) const {
    if (position < start_ || position > end()) {
        return std::nullopt;
    }
    auto index = static_cast<qsizetype>(position - start_);
    if (index > 0 && index < text_.size() && startsPair(index - 1)) {
        --index;
    }
    return offsets_[static_cast<std::size_t>(index)];
}

std::optional<std::int64_t> AtSpiTextContent::positionOf(int offset) const {
    const auto found = std::lower_bound(offsets_.begin(), offsets_.end(), offset);
    if (offset < offsets_.front() || found == offsets_.end()) {
        return std::nullopt;
    }
    auto index = static_cast<qsizetype>(found - offsets_.begin());
    if (index > 0 && index < text_.size() && startsPair(index - 1)) {
        --index;
    }
    return start_ + index;
}

bool AtSpiTextContent::isSecondHalf(int offset) const {
    const auto found = std::lower_bound(offsets_.begin(), offsets_.end(), offset);
    const auto index = static_cast<qsizetype>(found - offsets_.begin());
    return found != offsets_.end() && *found == offset && index > 0 && index < text_.size() &&
           startsPair(index - 1);
}

int AtSpiTextContent::unitsAt(std::int64_t position) const {
    const auto index = static_cast<qsizetype>(position - start_);
    return index >= 0 && index < text_.size() && startsPair(index) ? 2 : 1;
}

QString AtSpiTextContent::part(std::int64_t from, std::int64_t to) const {
    from = std::clamp(from, start_, end());
    to = std::clamp(to, from, end());
    QString result =
        text_.mid(static_cast<qsizetype>(from - start_), static_cast<qsizetype>(to - from));
    for (qsizetype i = 0; i < result.size(); ++i) {
        if (result.at(i).isHighSurrogate() && i + 1 < result.size() &&
            result.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (result.at(i).isSurrogate()) {
            result[i] = replacement;
        }
    }
    return result;
}

}  // namespace velmora
