// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiToolkit.h"

namespace velmora {

AtSpiToolkit atSpiToolkit(const QString& toolkitName, const QString& version,
                          const QString& applicationName) {
    // The office suite answers as the toolkit that it draws its windows with.
    if (applicationName.startsWith(u"soffice", Qt::CaseInsensitive) ||
        applicationName.startsWith(u"libreoffice", Qt::CaseInsensitive)) {
        return AtSpiToolkit::libreOffice;
    }
    if (toolkitName.compare(u"gtk", Qt::CaseInsensitive) == 0) {
        return version.section(u'.', 0, 0).toInt() >= 4 ? AtSpiToolkit::gtk4 : AtSpiToolkit::gtk3;
    }
    if (toolkitName.startsWith(u"Qt", Qt::CaseInsensitive)) {
        return AtSpiToolkit::qt;
    }
    if (toolkitName.compare(u"Chromium", Qt::CaseInsensitive) == 0) {
        return AtSpiToolkit::chromium;
    }
    if (toolkitName.compare(u"Gecko", Qt::CaseInsensitive) == 0) {
        return AtSpiToolkit::gecko;
    }
    return AtSpiToolkit::other;
}

bool countsUtf16(AtSpiToolkit toolkit) {
    return toolkit == AtSpiToolkit::qt || toolkit == AtSpiToolkit::libreOffice;
}

}  // namespace velmora
