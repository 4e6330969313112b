// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"

namespace velmora::test {

/// A capture of the screen as a picture that can be drawn into.
QImage screenPicture(const Image& screen);

/// Draws an arrow whose tip points there: captures of the screen are without the pointer. The
/// arrow is 19 pixels high at a scale of one.
void drawPointer(QImage& picture, Point tip, double scale = 1);

}  // namespace velmora::test
