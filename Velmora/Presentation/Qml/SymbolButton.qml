// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A borderless button of one symbol. It answers the mouse and assistive programs and never takes
// the focus.
Item {
    id: root

    required property string symbol
    required property string help
    required property real size

    signal clicked

    implicitWidth: Math.round(size * 1.36)
    implicitHeight: Math.round(size * 1.14)
    // The symbol's centre lies at half the height of a capital letter of its size.
    baselineOffset: implicitHeight / 2 + size * 0.357

    Accessible.role: Accessible.Button
    Accessible.name: help
    Accessible.description: help
    Accessible.onPressAction: root.clicked()

    Rectangle {
        anchors.fill: mouse
        radius: 5
        color: Theme.label
        opacity: mouse.pressed ? 0.14 : 0.07
        visible: mouse.containsMouse
    }

    Symbol {
        anchors.fill: parent
        name: root.symbol
        color: mouse.containsMouse ? Theme.label : Theme.secondaryLabel
    }

    MouseArea {
        id: mouse

        anchors.fill: parent
        anchors.margins: -4
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: root.clicked()
    }

    HelpTag {
        text: root.help
        target: root
        active: mouse.containsMouse && !mouse.pressed
    }
}
