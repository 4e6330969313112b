// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The lines of an input, without their ends.
inline std::vector<std::string> linesOf(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> lines;
    while (!rest.empty()) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        lines.emplace_back(line);
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    }
    return lines;
}
