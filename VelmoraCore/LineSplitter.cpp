// SPDX-License-Identifier: MIT
#include "VelmoraCore/LineSplitter.h"

namespace velmora {

std::optional<std::string_view> LineSplitter::next() {
    std::size_t start = position_;
    std::size_t at = start;
    while (at < text_.size()) {
        const std::size_t newline = newlineAt(at);
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

/// The bytes of the newline character at a position, 0 where there is none. CR LF may come as two:
/// the empty line between is dropped anyway.
std::size_t LineSplitter::newlineAt(std::size_t position) const {
    const auto byte = [&](std::size_t index) {
        return position + index < text_.size() ? static_cast<unsigned char>(text_[position + index])
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

}  // namespace velmora
