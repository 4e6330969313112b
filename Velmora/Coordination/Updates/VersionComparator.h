// SPDX-License-Identifier: MIT
#pragma once

#include <compare>
#include <string_view>

namespace velmora {

/// Orders versions by the update feed's rule: a version is a row of numbers, words and separators
/// (a change between the three starts a new part; every run of separators counts the same). Parts
/// are compared pair by pair, numbers by value, words by their letters; a number is newer than a
/// word. Of two versions of which one continues the other, the continuation is newer when it goes
/// on with a number and older when it goes on with a word ("1.5b3" comes before "1.5").
std::strong_ordering compareVersions(std::string_view left, std::string_view right);

}  // namespace velmora
