// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A line of a form about one permission.
FormRow {
    id: root

    required property bool granted

    signal openSettings

    StatusBadge {
        objectName: "badge"
        anchors.verticalCenter: parent.verticalCenter
        granted: root.granted
    }

    PushButton {
        objectName: "open"
        text: qsTr("Open Settings")
        name: qsTr("Open Settings") + ", " + root.text
        onClicked: root.openSettings()
    }
}
