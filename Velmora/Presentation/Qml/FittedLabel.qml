// SPDX-License-Identifier: MIT
import QtQuick

// One line that is drawn smaller, on the same baseline, where it is longer than the item is wide.
Item {
    id: root

    property alias text: label.text
    property alias font: label.font
    property alias color: label.color
    readonly property real squeeze: Math.min(1, width / Math.max(1, label.implicitWidth))

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight
    baselineOffset: label.baselineOffset

    Label {
        id: label

        transform: Scale {
            origin.y: label.baselineOffset
            xScale: root.squeeze
            yScale: root.squeeze
        }
    }
}
