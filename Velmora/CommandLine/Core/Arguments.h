// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The options and texts of one call. "--" ends the options; "--name value" and "--name=value" are
/// the same; the value may begin with a dash.
class Arguments {
  public:
    struct Option {
        std::string_view name;  ///< With its dashes.
        bool takesValue = false;
    };

    /// Throws `UsageError` for an unknown option, a missing value or a value that nobody asked for.
    Arguments(std::span<const std::string> arguments, std::span<const Option> known);

    bool has(std::string_view option) const;

    /// The last value of an option, or nothing.
    std::optional<std::string> value(std::string_view option) const;

    /// Every value of an option, in the order given.
    std::vector<std::string> values(std::string_view option) const;

    /// The arguments that are no options.
    const std::vector<std::string>& texts() const { return texts_; }

    /// The one text of a command that takes one; throws `UsageError` where there is none, more
    /// than one, or bytes that are not UTF-8.
    const std::string& onlyText(std::string_view name) const;

    /// The value of an option as an integer, or `fallback` where it is not given; throws
    /// `UsageError` where it is no integer of 64 bits.
    long long integer(std::string_view option, long long fallback) const;

  private:
    std::map<std::string, std::vector<std::string>, std::less<>> options_;
    std::vector<std::string> texts_;
};

/// Throws `UsageError` unless the text is UTF-8; `name` says which one it is.
void requireUtf8(std::string_view text, std::string_view name);

}  // namespace velmora
