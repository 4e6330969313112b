// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Velmora/Coordination/Updates/AppcastItem.h"

namespace velmora {

/// Reads an update feed: RSS 2.0 whose items carry a version, a short version, notes and an
/// enclosure with address, length and Ed25519 signature in the feed's extension namespace.
class AppcastParser {
  public:
    /// The complete items of a feed in document order; an item without a version, an https
    /// enclosure, a positive length or a signature is left out. Nothing where the text is no
    /// well-formed RSS, is larger than 1 MiB, or holds more than 500 items. Entities other than
    /// XML's own are not expanded.
    static std::optional<std::vector<AppcastItem>> parse(const std::string& xml);

    /// Notes as plain text: markup taken out, blocks on lines of their own, 20,000 characters at
    /// most.
    static std::string plainText(const std::string& notes);
};

}  // namespace velmora
