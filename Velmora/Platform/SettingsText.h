// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// How settings stand in text: one rule for every store of them.

/// `true` and `1` are true, any other text is false.
bool settingAsBoolean(std::string_view text);

/// The number that the whole text writes; 0 where it is none or not finite.
double settingAsNumber(std::string_view text);

/// The shortest text that reads back as the same number.
std::string settingFromNumber(double value);

}  // namespace velmora
