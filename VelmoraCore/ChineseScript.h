// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace velmora {

/// The script that the user prefers to read.
enum class ChineseScript { simplified, traditional };

/// The text under which a script is stored: "simplified" or "traditional".
constexpr std::string_view rawValue(ChineseScript script) {
    return script == ChineseScript::simplified ? "simplified" : "traditional";
}

/// The script with exactly this raw value (case-sensitive), or nothing.
constexpr std::optional<ChineseScript> chineseScriptFromRawValue(std::string_view text) {
    if (text == "simplified") {
        return ChineseScript::simplified;
    }
    if (text == "traditional") {
        return ChineseScript::traditional;
    }
    return std::nullopt;
}

}  // namespace velmora
