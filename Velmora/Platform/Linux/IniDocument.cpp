// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/IniDocument.h"

namespace velmora {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The name between brackets where the line begins a group.
std::optional<std::string_view> groupName(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']') {
        return std::nullopt;
    }
    return trimmed(text.substr(1, text.size() - 2));
}

/// The part before the equals sign where the line is a key with a value.
std::optional<std::string_view> keyName(std::string_view line) {
    const std::string_view text = trimmed(line);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || text.front() == ';' || text.front() == '#') {
        return std::nullopt;
    }
    return trimmed(text.substr(0, equals));
}

/// A value must stay on its line.
std::string escaped(std::string_view value) {
    std::string text;
    for (const char c : value) {
        switch (c) {
            case '\\':
                text += "\\\\";
                break;
            case '\n':
                text += "\\n";
                break;
            case '\r':
                text += "\\r";
                break;
            default:
                text += c;
        }
    }
    return text;
}

std::string unescaped(std::string_view text) {
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == '\\' || next == 'n' || next == 'r') {
            value += next == 'n' ? '\n' : next == 'r' ? '\r' : '\\';
            ++i;
        } else {
            value += text[i];
        }
    }
    return value;
}

}  // namespace

IniDocument::IniDocument(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines_.emplace_back(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
}

IniDocument::Place IniDocument::find(std::string_view group, std::string_view key) const {
    Place place;
    bool inside = false;
    for (std::size_t index = 0; index < lines_.size(); ++index) {
        if (const auto name = groupName(lines_[index])) {
            inside = *name == group;
            if (inside) {
                place.groupEnd = index + 1;
            }
        } else if (inside && keyName(lines_[index])) {
            place.groupEnd = index + 1;
            if (keyName(lines_[index]) == key) {
                place.line = index;
            }
        }
    }
    return place;
}

std::optional<std::string> IniDocument::value(std::string_view group, std::string_view key) const {
    const Place place = find(group, key);
    if (!place.line) {
        return std::nullopt;
    }
    const std::string_view line = lines_[*place.line];
    return unescaped(trimmed(line.substr(line.find('=') + 1)));
}

void IniDocument::setValue(std::string_view group, std::string_view key, std::string_view value) {
    const std::string line = std::string(key) + "=" + escaped(value);
    const Place place = find(group, key);
    if (place.line) {
        lines_[*place.line] = line;
    } else if (place.groupEnd) {
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(*place.groupEnd), line);
    } else {
        if (!lines_.empty() && !trimmed(lines_.back()).empty()) {
            lines_.emplace_back();
        }
        lines_.push_back("[" + std::string(group) + "]");
        lines_.push_back(line);
    }
}

std::string IniDocument::text() const {
    std::string text;
    for (const std::string& line : lines_) {
        text += line;
        text += '\n';
    }
    return text;
}

}  // namespace velmora
