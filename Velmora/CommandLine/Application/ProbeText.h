// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "Velmora/CommandLine/Core/TextStyle.h"
#include "Velmora/TextCapture/ExtractionPath.h"
#include "Velmora/TextCapture/TextProbe.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora {

/// A probe for people: the text, the hovered character and its place, and the words found in it.
std::string probeText(const TextProbe& probe, const std::optional<Rect>& nativeAnchor,
                      ExtractionPath via, const LookupEngine& engine, const TextStyle& style);

}  // namespace velmora
