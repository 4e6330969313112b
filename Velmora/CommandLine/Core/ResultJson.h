// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <span>

#include "VelmoraCore/LookupResult.h"
#include "VelmoraCore/OCRTextCorrector.h"
#include "VelmoraCore/PinyinSyllable.h"

namespace velmora {

/// {"matchedText", "range": {"start", "end"}, "entry", "characterBreakdown", "alternatives"};
/// entries as the model codes them.
nlohmann::ordered_json resultJson(const LookupResult& result);

/// {"text", "referenceIndex", "characterRange": {"start", "end"}}
nlohmann::ordered_json alignmentJson(const OCRTextCorrector::Alignment& alignment);

/// An array of {"numbered", "marked", "tone"}.
nlohmann::ordered_json syllablesJson(std::span<const PinyinSyllable> syllables);

}  // namespace velmora
