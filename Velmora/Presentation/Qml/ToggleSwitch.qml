// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A switch. It shows `checked` and asks for another value; whoever owns the value changes it.
Item {
    id: root

    required property bool checked
    required property string name

    signal toggled(bool checked)

    implicitWidth: 40
    implicitHeight: 24
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onToggleAction: root.toggled(!root.checked)
    Accessible.onPressAction: root.toggled(!root.checked)

    Keys.onSpacePressed: toggled(!checked)

    Rectangle {
        id: track

        anchors.fill: parent
        radius: height / 2
        color: root.checked ? Theme.tint : Theme.control
        border.width: root.checked ? 0 : 1
        border.color: Theme.separator

        Behavior on color { ColorAnimation { duration: 120 } }
    }

    Rectangle {
        x: root.checked ? root.width - width - 2 : 2
        y: 2
        width: height
        height: root.height - 4
        radius: height / 2
        color: "white"
        border.color: Qt.rgba(0, 0, 0, 0.12)

        Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }
    }

    MouseArea {
        anchors.fill: parent
        onClicked: root.toggled(!root.checked)
    }

    FocusRing {
        control: root
        radius: height / 2
    }
}
