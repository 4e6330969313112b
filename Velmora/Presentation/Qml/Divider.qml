// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A hairline across its parent.
Rectangle {
    implicitHeight: 1
    color: Theme.separator
}
