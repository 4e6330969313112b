// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace velmora {

/// The toolkits whose answers differ.
enum class AtSpiToolkit { gtk3, gtk4, qt, chromium, gecko, libreOffice, other };

/// From what the application object says about itself.
AtSpiToolkit atSpiToolkit(const QString& toolkitName, const QString& version,
                          const QString& applicationName);

/// Whether the toolkit counts text in UTF-16 units; otherwise in code points (and Gecko puts a
/// U+FEFF behind each one beyond U+FFFF).
bool countsUtf16(AtSpiToolkit toolkit);

}  // namespace velmora
