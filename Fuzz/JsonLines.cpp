// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/JsonLines.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <nlohmann/json.hpp>

#include "VelmoraCore/SeedDictionary.h"

/// Any line gets an answer that is one line of JSON: an object or null.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const velmora::LookupEngine engine(
        std::make_shared<const velmora::DictionaryStore>(velmora::SeedDictionary::entries()));
    const std::string answer =
        velmora::answerJsonLine({reinterpret_cast<const char*>(data), size}, engine);
    const auto json = nlohmann::json::parse(answer, nullptr, false);
    if (answer.find('\n') != std::string::npos || !(json.is_object() || json.is_null())) {
        std::abort();
    }
    return 0;
}
