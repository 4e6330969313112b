// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/OsRelease.h"

#include <array>
#include <fstream>

namespace velmora {

namespace {

/// The value of a shell assignment: quotes gone, escapes within double quotes resolved.
std::string unquoted(std::string_view value) {
    while (!value.empty() &&
           (value.back() == ' ' || value.back() == '\r' || value.back() == '\t')) {
        value.remove_suffix(1);
    }
    const bool quoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                        value.back() == value.front();
    if (!quoted) {
        return std::string(value);
    }
    const bool escapes = value.front() == '"';
    value = value.substr(1, value.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (escapes && value[i] == '\\' && i + 1 < value.size()) {
            ++i;
        }
        text += value[i];
    }
    return text;
}

}  // namespace

std::string prettyNameFromOsRelease(std::string_view text) {
    constexpr std::string_view key = "PRETTY_NAME=";
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        if (line.starts_with(key)) {
            return unquoted(line.substr(key.size()));
        }
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
    return {};
}

std::string operatingSystemVersion(const std::vector<std::filesystem::path>& files) {
    for (const std::filesystem::path& file : files) {
        std::ifstream stream(file, std::ios::binary);
        std::array<char, 16384> buffer{};
        stream.read(buffer.data(), buffer.size());
        const std::string name = prettyNameFromOsRelease(
            std::string_view(buffer.data(), static_cast<std::size_t>(stream.gcount())));
        if (!name.empty()) {
            return name;
        }
    }
    return "Linux";
}

}  // namespace velmora
