// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "VelmoraCore/ModelCoding.h"

namespace {

/// Reads a value or refuses it with the one error there is; what was read survives being written
/// and read again.
template <typename Value>
void roundTrip(std::string_view text) {
    try {
        const Value value = velmora::decodeJson<Value>(text);
        if (!(velmora::decodeJson<Value>(velmora::encodeJson(value)) == value)) {
            std::abort();
        }
    } catch (const velmora::DecodingError&) {
        return;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    roundTrip<velmora::DictionaryEntry>(text);
    roundTrip<velmora::EntryDefinition>(text);
    roundTrip<velmora::ExampleSentence>(text);
    roundTrip<velmora::PinyinSyllable>(text);
    roundTrip<velmora::PinyinTone>(text);
    roundTrip<velmora::ChineseScript>(text);
    roundTrip<velmora::Uuid>(text);
    return 0;
}
