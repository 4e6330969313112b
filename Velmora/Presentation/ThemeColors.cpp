// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ThemeColors.h"

namespace velmora {

// The four tone colours keep a contrast of at least 3 : 1 to the card, whatever shines through it,
// and the labels at least 4.5 : 1.

const ThemeColors& ThemeColors::light() {
    static const ThemeColors colors{
        .label = QColor(0x1c, 0x1c, 0x1f),
        .secondaryLabel = QColor(0x63, 0x63, 0x6b),
        .separator = QColor(0x00, 0x00, 0x00, 0x2e),
        .red = QColor(0xd7, 0x2c, 0x2c),
        .orange = QColor(0xc2, 0x62, 0x00),
        .green = QColor(0x17, 0x82, 0x3b),
        .blue = QColor(0x0b, 0x62, 0xd6),
        .material = QColor(0xf8, 0xf8, 0xfa, 0xfc),
        .opaqueMaterial = QColor(0xf8, 0xf8, 0xfa),
        .helpTag = QColor(0xff, 0xff, 0xff),
        .shadow = QColor(0x00, 0x00, 0x00, 0x48),
    };
    return colors;
}

const ThemeColors& ThemeColors::dark() {
    static const ThemeColors colors{
        .label = QColor(0xf2, 0xf2, 0xf4),
        .secondaryLabel = QColor(0xab, 0xab, 0xb3),
        .separator = QColor(0xff, 0xff, 0xff, 0x33),
        .red = QColor(0xff, 0x6b, 0x63),
        .orange = QColor(0xff, 0xa7, 0x3d),
        .green = QColor(0x4c, 0xd0, 0x75),
        .blue = QColor(0x63, 0xae, 0xff),
        .material = QColor(0x2b, 0x2b, 0x2f, 0xfc),
        .opaqueMaterial = QColor(0x2b, 0x2b, 0x2f),
        .helpTag = QColor(0x47, 0x47, 0x4d),
        .shadow = QColor(0x00, 0x00, 0x00, 0x8c),
    };
    return colors;
}

}  // namespace velmora
