// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// One thing that the program does, as a capsule.
Rectangle {
    id: root

    required property string icon
    required property string title

    implicitWidth: Math.ceil(content.implicitWidth) + 36
    implicitHeight: 42
    radius: height / 2
    color: Theme.group
    border.color: Qt.alpha(Theme.separator, Theme.separator.a * 0.5)

    Accessible.role: Accessible.StaticText
    Accessible.name: title

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 9

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            height: 17
            name: root.icon
            color: Theme.blue
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: root.title
            font: Theme.headline()
        }
    }
}
