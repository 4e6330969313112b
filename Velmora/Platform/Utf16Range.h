// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace velmora {

/// A range of UTF-16 units of an element's value. A location of −1 means that nothing was found.
struct Utf16Range {
    std::int64_t location = 0;
    std::int64_t length = 0;

    bool operator==(const Utf16Range&) const = default;
};

}  // namespace velmora
