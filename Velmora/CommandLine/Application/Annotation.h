// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

#include "Velmora/CommandLine/Application/Recognition.h"

namespace velmora {

/// The picture with the lines' boxes, the cells of the first readings' characters, their text and
/// confidence, and the anchor of the probe drawn over it. Letters need a QGuiApplication.
QImage annotated(const QImage& picture, const Recognition& recognition);

}  // namespace velmora
