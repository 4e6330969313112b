// SPDX-License-Identifier: MIT
#include "VelmoraCore/BoundedJson.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "VelmoraCore/DecodingError.h"

namespace velmora {
namespace {

/// How many brackets and braces are open at once. Looks at nothing else, so that it may be asked of
/// any bytes before a parser sees them.
std::size_t nestingDepth(std::string_view text) {
    std::size_t open = 0;
    std::size_t deepest = 0;
    bool quoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (quoted) {
            at += static_cast<std::size_t>(byte == '\\');
            quoted = byte != '"';
        } else if (byte == '"') {
            quoted = true;
        } else if (byte == '[' || byte == '{') {
            deepest = std::max(deepest, ++open);
        } else if ((byte == ']' || byte == '}') && open > 0) {
            --open;
        }
    }
    return deepest;
}

}  // namespace

nlohmann::json parseBoundedJson(std::string_view text, const JsonLimits& limits) {
    if (text.size() > limits.bytes) {
        throw DecodingError("longer than " + std::to_string(limits.bytes) + " bytes");
    }
    if (nestingDepth(text) > limits.depth) {
        throw DecodingError("nested deeper than " + std::to_string(limits.depth) + " levels");
    }
    try {
        return nlohmann::json::parse(text);
    } catch (const nlohmann::json::parse_error& error) {
        throw DecodingError("not valid JSON at byte " + std::to_string(error.byte));
    } catch (const nlohmann::json::exception&) {
        throw DecodingError("not valid JSON: a number is out of range");
    }
}

}  // namespace velmora
