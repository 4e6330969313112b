// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// What a button does, shown beside it when the pointer has rested on it for a while.
Rectangle {
    id: root

    required property string text
    required property Item target
    required property bool active

    property bool due: false

    parent: target.Window.contentItem
    visible: active && due
    z: 100
    width: label.implicitWidth + 12
    height: label.implicitHeight + 6
    radius: 4
    color: Theme.helpTag
    border.color: Theme.separator

    onActiveChanged: due = false
    onVisibleChanged: {
        if (visible) {
            const corner = target.mapToItem(parent, target.width / 2, target.height + 7);
            x = Math.round(Math.max(4, Math.min(parent.width - width - 4, corner.x - width / 2)));
            y = Math.round(corner.y + height + 4 <= parent.height
                           ? corner.y : corner.y - target.height - height - 14);
        }
    }

    Label {
        id: label

        x: 6
        y: 3
        text: root.text
        font: Theme.caption()
    }

    Timer {
        interval: 700
        running: root.active && !root.due
        onTriggered: root.due = true
    }
}
