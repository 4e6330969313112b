// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Shows which part of a list is in sight, and moves it when dragged. Absent while all of it is.
Item {
    id: root

    required property Flickable view

    readonly property real range: view.contentHeight - view.height
    readonly property real thumbHeight: Math.max(28, height * view.height / view.contentHeight)
    readonly property real travel: height - thumbHeight

    implicitWidth: 6
    visible: range > 0

    Rectangle {
        x: 1
        y: root.travel * Math.max(0, Math.min(1, (root.view.contentY - root.view.originY) / root.range))
        width: 4
        height: root.thumbHeight
        radius: 2
        color: Theme.label
        opacity: drag.pressed ? 0.5 : 0.28
    }

    MouseArea {
        id: drag

        property real grabbedAt: 0
        property real startedAt: 0

        anchors.fill: parent
        anchors.margins: -5
        onPressed: mouse => {
            grabbedAt = mouse.y;
            startedAt = root.view.contentY - root.view.originY;
        }
        onPositionChanged: mouse => {
            const moved = startedAt + (mouse.y - grabbedAt) * root.range / root.travel;
            root.view.contentY = root.view.originY + Math.max(0, Math.min(root.range, moved));
        }
    }
}
