// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// The last words that were shown, the newest first, each simplified headword once. A plain value.
class RecentLookups {
  public:
    static constexpr std::size_t limit = 8;

    /// Puts these before all others, in their order; what exceeds the limit is forgotten.
    void add(const std::vector<LookupResult>& results);

    const std::vector<LookupResult>& all() const { return lookups_; }

  private:
    std::vector<LookupResult> lookups_;
};

}  // namespace velmora
