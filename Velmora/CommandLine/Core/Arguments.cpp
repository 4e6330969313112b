// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/Arguments.h"

#include <algorithm>
#include <charconv>

#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {

Arguments::Arguments(std::span<const std::string> arguments, std::span<const Option> known) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (optionsEnded || argument.size() < 2 || argument.front() != '-') {
            texts_.push_back(argument);
            continue;
        }
        if (argument == "--") {
            optionsEnded = true;
            continue;
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const auto option =
            std::ranges::find_if(known, [&](const Option& one) { return one.name == name; });
        if (option == known.end()) {
            throw UsageError("unknown option " + printable(name));
        }
        std::vector<std::string>& values = options_[name];
        if (!option->takesValue) {
            if (equals != std::string::npos) {
                throw UsageError(name + " takes no value");
            }
        } else if (equals != std::string::npos) {
            values.push_back(argument.substr(equals + 1));
        } else if (i + 1 < arguments.size()) {
            values.push_back(arguments[++i]);
        } else {
            throw UsageError(name + " needs a value");
        }
    }
}

bool Arguments::has(std::string_view option) const {
    return options_.find(option) != options_.end();
}

std::optional<std::string> Arguments::value(std::string_view option) const {
    const auto found = options_.find(option);
    if (found == options_.end() || found->second.empty()) {
        return std::nullopt;
    }
    return found->second.back();
}

std::vector<std::string> Arguments::values(std::string_view option) const {
    const auto found = options_.find(option);
    return found == options_.end() ? std::vector<std::string>{} : found->second;
}

const std::string& Arguments::onlyText(std::string_view name) const {
    if (texts_.empty()) {
        throw UsageError(std::string(name) + " is missing");
    }
    if (texts_.size() > 1) {
        throw UsageError("only one " + std::string(name) +
                         " is taken; put quotes around a text with blanks");
    }
    requireUtf8(texts_.front(), name);
    return texts_.front();
}

long long Arguments::integer(std::string_view option, long long fallback) const {
    const std::optional<std::string> given = value(option);
    if (!given) {
        return fallback;
    }
    long long number = 0;
    const char* end = given->data() + given->size();
    const auto [stop, error] = std::from_chars(given->data(), end, number);
    if (error == std::errc::result_out_of_range) {
        throw UsageError(std::string(option) + " is out of range: " + printable(*given));
    }
    if (error != std::errc{} || stop != end) {
        throw UsageError(std::string(option) + " is not a whole number: " + printable(*given));
    }
    return number;
}

void requireUtf8(std::string_view text, std::string_view name) {
    if (!isValidUtf8(text)) {
        throw UsageError(std::string(name) + " is not UTF-8");
    }
}

}  // namespace velmora
