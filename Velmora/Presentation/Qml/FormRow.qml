// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A line of a form: what it is about at the leading edge, its controls at the trailing one.
Item {
    id: root

    property string text
    property bool clickable: false
    // Whether the controls bear the line's text as their own name.
    property bool namesControls: false
    default property alias content: controls.data
    readonly property real margin: 14
    readonly property real contentWidth: width - 2 * margin

    signal clicked

    width: parent ? parent.width : 0
    implicitHeight: 44

    Divider {
        x: root.margin
        width: root.width - root.margin
        visible: root.y > 0
        opacity: 0.6
    }

    MouseArea {
        anchors.fill: parent
        enabled: root.clickable
        onClicked: root.clicked()
    }

    Label {
        x: root.margin
        anchors.verticalCenter: parent.verticalCenter
        visible: root.text !== ""
        text: root.text
        font: Theme.body()

        Accessible.ignored: root.namesControls
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Row {
        id: controls

        anchors.right: parent.right
        anchors.rightMargin: root.margin
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12
    }
}
