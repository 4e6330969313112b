// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <optional>

#include "Velmora/Diagnostics/LookupRecord.h"

namespace velmora {

/// The object that stands for a record in the log; its keys come out in alphabetical order.
/// `timestamp` is in seconds since 1970-01-01 UTC. Nothing where a number is not finite.
std::optional<nlohmann::json> qaLogObject(const LookupRecord& record, double timestamp);

}  // namespace velmora
