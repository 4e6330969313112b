// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <string>

namespace velmora::test {

/// Compares a picture with the approved one of this name. A pixel differs where any of its colours
/// is more than 16 of 255 away; up to 0.1 % of the pixels may differ, which leaves room for other
/// versions of the font rasteriser and none for a line that moved by a pixel. Where they do not
/// agree, the actual picture and one of the differences are left in the build folder. With
/// VELMORA_APPROVE=1 in the environment the picture becomes the approved one.
::testing::AssertionResult matchesApproved(const QImage& actual, const std::string& name);

}  // namespace velmora::test
