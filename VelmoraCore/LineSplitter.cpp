// SPDX-License-Identifier: MIT
#include "VelmoraCore/LineSplitter.h"

#include <algorithm>

namespace velmora {

std::size_t newlineLength(std::string_view text, std::size_t position) {
    const auto byte = [&](std::size_t index) {
        return position + index < text.size() ? static_cast<unsigned char>(text[position + index])
                                              : 0;
    };
    const unsigned char first = static_cast<unsigned char>(byte(0));
    if (first >= 0x0A && first <= 0x0D) {
        return 1;
    }
    if (first == 0xC2 && byte(1) == 0x85) {
        return 2;
    }
    if (first == 0xE2 && byte(1) == 0x80 && (byte(2) == 0xA8 || byte(2) == 0xA9)) {
        return 3;
    }
    return 0;
}

std::optional<std::string_view> LineSplitter::next() {
    if (!hasRareLineEnds_) {
        return nextByLineFeed();
    }
    // CR LF may come as two ends: the empty line between them is dropped anyway.
    std::size_t start = position_;
    std::size_t at = start;
    while (at < text_.size()) {
        const std::size_t newline = newlineLength(text_, at);
        if (newline == 0) {
            ++at;
            continue;
        }
        if (at > start) {
            position_ = at + newline;
            return text_.substr(start, at - start);
        }
        at += newline;
        start = at;
    }
    position_ = at;
    return at > start ? std::optional(text_.substr(start)) : std::nullopt;
}

std::optional<std::string_view> LineSplitter::nextByLineFeed() {
    while (position_ < text_.size()) {
        const std::string_view rest = text_.substr(position_);
        std::string_view line = rest.substr(0, rest.find('\n'));
        position_ += std::min(line.size() + 1, rest.size());
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (!line.empty()) {
            return line;
        }
    }
    return std::nullopt;
}

}  // namespace velmora
