// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace velmora {

/// The colours of one appearance. Sizes and fonts do not depend on it.
struct ThemeColors {
    QColor label;           ///< Primary text.
    QColor secondaryLabel;  ///< Text of less weight.
    QColor separator;       ///< Hairlines, translucent.
    QColor red;
    QColor orange;
    QColor green;
    QColor blue;
    QColor material;        ///< What cards are made of where windows are blended.
    QColor opaqueMaterial;  ///< The same where they are not.
    QColor helpTag;         ///< The ground of the text that explains a button.
    QColor shadow;          ///< The darkest part of the shadow under a card.
    QColor window;          ///< The ground of ordinary windows.
    QColor group;           ///< The ground of what belongs together in them.
    QColor control;         ///< The body of a button, and the track of a switch that is off.
    QColor tint;            ///< What is on, chosen or to be pressed first; white stands on it.

    static const ThemeColors& light();
    static const ThemeColors& dark();
};

}  // namespace velmora
