// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// One dot per step; the current one is drawn out.
Row {
    id: root

    required property int current
    property int count: 3

    spacing: 8

    Accessible.role: Accessible.StaticText
    Accessible.name: qsTr("Step %1 of %2").arg(current + 1).arg(count)

    Repeater {
        model: root.count

        Rectangle {
            required property int index
            readonly property bool active: index === root.current

            objectName: "dot"
            width: active ? 24 : 8
            height: 8
            radius: 4
            color: active ? Theme.blue : Qt.alpha(Theme.label, 0.22)

            Behavior on width { NumberAnimation { duration: 220; easing.type: Easing.OutCubic } }
            Behavior on color { ColorAnimation { duration: 220 } }
        }
    }
}
