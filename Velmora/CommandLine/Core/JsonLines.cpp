// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/JsonLines.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>

#include "Velmora/CommandLine/Core/LineReader.h"
#include "Velmora/CommandLine/Core/ResultJson.h"
#include "VelmoraCore/ModelCoding.h"

namespace velmora {

namespace {

nlohmann::json parsed(std::string_view line) {
    if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
        throw DecodingError("the line is empty");
    }
    return parseBoundedJson(line, {.bytes = maximumJsonLineLength, .depth = maximumJsonDepth});
}

long long offsetOf(const nlohmann::json& request) {
    const auto found = request.find("offset");
    if (found == request.end()) {
        return 0;
    }
    if (!found->is_number_integer()) {
        throw DecodingError("offset must be an integer");
    }
    if (found->is_number_unsigned() &&
        found->get<std::uint64_t>() >
            static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        throw DecodingError("offset is out of range");
    }
    return found->get<long long>();
}

std::string answer(std::string_view line, const LookupEngine& engine) {
    const nlohmann::json request = parsed(line);
    if (!request.is_object()) {
        throw DecodingError("the line must be an object with text and offset");
    }
    const auto text = request.find("text");
    if (text == request.end() || !text->is_string()) {
        throw DecodingError("text must be a string");
    }
    const auto result = engine.lookup(text->get_ref<const std::string&>(), offsetOf(request));
    return result ? jsonText(resultJson(*result)) : "null";
}

std::string errorLine(const std::string& message) {
    return jsonText(nlohmann::ordered_json{{"error", message}});
}

}  // namespace

std::string answerJsonLine(std::string_view line, const LookupEngine& engine) {
    try {
        return answer(line, engine);
    } catch (const DecodingError& error) {
        return errorLine(error.what());
    }
}

void answerJsonLines(const LookupEngine& engine, CommandStreams& streams) {
    LineReader reader(streams.in, maximumJsonLineLength);
    while (const auto line = reader.next()) {
        const std::string text = line->tooLong ? errorLine("the line is longer than 1 MiB")
                                               : answerJsonLine(line->text, engine);
        streams.out << text << '\n' << std::flush;
        if (!streams.out) {
            return;
        }
    }
}

}  // namespace velmora
