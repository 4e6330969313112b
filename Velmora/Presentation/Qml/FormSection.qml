// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Lines of a form that belong together, under their title.
Column {
    id: root

    required property string title
    default property alias rows: list.data

    width: parent ? parent.width : 0
    spacing: 7

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Label {
        x: 14
        text: root.title
        font: Theme.headline()

        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        width: root.width
        height: list.implicitHeight
        radius: 10
        color: Theme.group
        border.color: Qt.alpha(Theme.separator, Theme.separator.a * 0.5)

        Column {
            id: list

            width: parent.width
        }
    }
}
