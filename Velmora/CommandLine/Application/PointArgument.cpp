// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/PointArgument.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {

namespace {

std::optional<double> number(std::string_view text) {
    constexpr double largest = 1e6;
    double value = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (error != std::errc() || end != text.data() + text.size() || !(std::abs(value) <= largest)) {
        return std::nullopt;
    }
    return value;
}

}  // namespace

Point pointArgument(const std::string& text) {
    const std::string_view view = text;
    const std::size_t comma = view.find(',');
    if (comma != std::string_view::npos) {
        const auto x = number(view.substr(0, comma));
        const auto y = number(view.substr(comma + 1));
        if (x && y) {
            return {*x, *y};
        }
    }
    throw UsageError("--at takes X,Y, a position in pixels");
}

}  // namespace velmora
