// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/MemorySettings.h"

#include "Velmora/Platform/SettingsText.h"

namespace velmora {

std::optional<bool> MemorySettings::boolean(const std::string& key) const {
    const auto value = text(key);
    return value ? std::optional(settingAsBoolean(*value)) : std::nullopt;
}

std::optional<double> MemorySettings::number(const std::string& key) const {
    const auto value = text(key);
    return value ? std::optional(settingAsNumber(*value)) : std::nullopt;
}

std::optional<std::string> MemorySettings::text(const std::string& key) const {
    const auto found = values_.find(key);
    return found != values_.end() ? std::optional(found->second) : std::nullopt;
}

void MemorySettings::setBoolean(const std::string& key, bool value) {
    values_[key] = value ? "true" : "false";
}

void MemorySettings::setNumber(const std::string& key, double value) {
    values_[key] = settingFromNumber(value);
}

void MemorySettings::setText(const std::string& key, const std::string& value) {
    values_[key] = value;
}

}  // namespace velmora
