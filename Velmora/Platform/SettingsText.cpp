// SPDX-License-Identifier: MIT
#include "Velmora/Platform/SettingsText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace velmora {

bool settingAsBoolean(std::string_view text) {
    return text == "true" || text == "1";
}

double settingAsNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
        return 0;
    }
    return value;
}

std::string settingFromNumber(double value) {
    std::array<char, 64> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return error == std::errc() ? std::string(buffer.data(), end) : std::string("0");
}

}  // namespace velmora
