// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/Updates/VersionComparator.h"

#include <algorithm>
#include <string>
#include <vector>

namespace velmora {
namespace {

enum class Kind { number, word };

struct Part {
    Kind kind;
    std::string_view text;
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isSeparator(char c) {
    constexpr std::string_view separators = ".-_+,;:/ \t\n()[]~";
    return separators.find(c) != std::string_view::npos;
}

std::vector<Part> split(std::string_view version) {
    std::vector<Part> parts;
    std::size_t at = 0;
    while (at < version.size()) {
        if (isSeparator(version[at])) {
            ++at;
            continue;
        }
        const bool number = isDigit(version[at]);
        std::size_t end = at;
        while (end < version.size() && !isSeparator(version[end]) &&
               isDigit(version[end]) == number) {
            ++end;
        }
        parts.push_back({number ? Kind::number : Kind::word, version.substr(at, end - at)});
        at = end;
    }
    return parts;
}

std::strong_ordering compareNumbers(std::string_view left, std::string_view right) {
    // By length without leading zeros first: numbers of any size compare without overflowing.
    left.remove_prefix(std::min(left.find_first_not_of('0'), left.size()));
    right.remove_prefix(std::min(right.find_first_not_of('0'), right.size()));
    if (left.size() != right.size()) {
        return left.size() <=> right.size();
    }
    return left.compare(right) <=> 0;
}

std::strong_ordering compareParts(const Part& left, const Part& right) {
    if (left.kind != right.kind) {
        return left.kind == Kind::number ? std::strong_ordering::greater
                                         : std::strong_ordering::less;
    }
    return left.kind == Kind::number ? compareNumbers(left.text, right.text)
                                     : left.text.compare(right.text) <=> 0;
}

}  // namespace

std::strong_ordering compareVersions(std::string_view left, std::string_view right) {
    const auto leftParts = split(left);
    const auto rightParts = split(right);
    const std::size_t shared = std::min(leftParts.size(), rightParts.size());
    for (std::size_t index = 0; index < shared; ++index) {
        const auto order = compareParts(leftParts[index], rightParts[index]);
        if (order != std::strong_ordering::equal) {
            return order;
        }
    }
    if (leftParts.size() == rightParts.size()) {
        return std::strong_ordering::equal;
    }
    const bool leftIsLonger = leftParts.size() > shared;
    const Part& next = leftIsLonger ? leftParts[shared] : rightParts[shared];
    const bool longerIsNewer = next.kind == Kind::number;
    return leftIsLonger == longerIsNewer ? std::strong_ordering::greater
                                         : std::strong_ordering::less;
}

}  // namespace velmora
