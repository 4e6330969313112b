// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A button of a window, with a symbol where it has one.
Item {
    id: root

    property string text
    property string symbol
    property bool symbolTrails: false
    property bool prominent: false
    property real horizontalPadding: 13
    property string name: text

    signal clicked

    implicitWidth: Math.ceil(content.implicitWidth) + 2 * horizontalPadding
    implicitHeight: 30
    opacity: enabled ? 1 : 0.4
    activeFocusOnTab: enabled

    Accessible.role: Accessible.Button
    Accessible.name: name
    Accessible.focusable: enabled
    Accessible.focused: activeFocus
    Accessible.onPressAction: if (root.enabled) root.clicked()

    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Rectangle {
        anchors.fill: parent
        radius: Math.min(8, height / 2)
        color: root.prominent ? Theme.tint : Theme.control

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.prominent ? "black" : Theme.label
            opacity: mouse.pressed ? 0.16 : 0.07
            visible: mouse.containsMouse && root.enabled
        }
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 7
        layoutDirection: root.symbolTrails ? Qt.RightToLeft : Qt.LeftToRight

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            width: 13
            height: 13
            visible: root.symbol !== ""
            name: root.symbol
            color: label.color
        }

        Label {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            visible: root.text !== ""
            text: root.text
            font: root.prominent ? Theme.headline() : Theme.body()
            color: root.prominent ? "white" : Theme.label
        }
    }

    MouseArea {
        id: mouse

        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }

    FocusRing {
        control: root
        radius: 11
    }
}
