// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Shows which control the keyboard works on. Clicks of the mouse leave the focus where it is.
Rectangle {
    required property Item control

    anchors.fill: parent
    anchors.margins: -3
    visible: control.activeFocus
    color: "transparent"
    border.width: 2
    border.color: Theme.blue
}
