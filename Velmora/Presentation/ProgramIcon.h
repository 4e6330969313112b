// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace velmora {

/// The program's icon in the sizes in which title bars, task bars and switchers show windows, 16 to
/// 64 pixels. Drawn anew at each call, in a few milliseconds. Main thread.
QIcon drawProgramIcon();

}  // namespace velmora
