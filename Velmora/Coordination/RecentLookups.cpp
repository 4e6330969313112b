// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/RecentLookups.h"

#include <algorithm>
#include <iterator>

namespace velmora {

void RecentLookups::add(const std::vector<LookupResult>& results) {
    std::vector<LookupResult> merged;
    merged.reserve(limit);
    const auto take = [&merged](const std::vector<LookupResult>& source) {
        for (const LookupResult& result : source) {
            if (merged.size() == limit) {
                return;
            }
            const bool known = std::any_of(merged.begin(), merged.end(), [&](const auto& other) {
                return other.entry.simplified == result.entry.simplified;
            });
            if (!known) {
                merged.push_back(result);
            }
        }
    };
    take(results);
    take(lookups_);
    lookups_ = std::move(merged);
}

}  // namespace velmora
