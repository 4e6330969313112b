// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The bubble: one line of pinyin on a capsule.
Item {
    id: root

    required property string pinyin
    required property real fontScale

    readonly property real cornerRadius: height / 2

    implicitWidth: label.implicitWidth + 2 * 12
    implicitHeight: label.implicitHeight + 2 * 7

    Material {
        anchors.fill: parent
        radius: root.cornerRadius
        fill: Theme.material
        fillsCorners: !Theme.compositing
        stroke: Theme.materialStroke
    }

    Label {
        id: label

        objectName: "pinyin"
        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 2 * 12)
        text: root.pinyin
        font: Theme.font(15 * root.fontScale, Font.DemiBold)
        maximumLineCount: 1
        elide: Text.ElideRight
    }
}
