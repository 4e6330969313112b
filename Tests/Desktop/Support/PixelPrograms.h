// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Tests/Desktop/Support/ReadProgram.h"

namespace velmora::test {

/// Programs that show text as nothing but pixels: pictures, film with subtitles, scanned pages,
/// bitmap letters; light and dark.
const std::vector<ReadProgram>& pixelPrograms();

}  // namespace velmora::test
