// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string_view>

namespace velmora {

/// How much JSON is read from a source that is not trusted.
struct JsonLimits {
    std::size_t bytes = std::size_t{1} << 20;
    std::size_t depth = 16;  ///< Arrays and objects inside one another.
};

/// The value of a whole JSON text. Throws DecodingError, and nothing else, where the text is longer
/// or deeper than the limits, not UTF-8 or not JSON.
nlohmann::json parseBoundedJson(std::string_view text, const JsonLimits& limits = {});

}  // namespace velmora
