// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// What the desktop has to allow, and switching lookups on.
Item {
    id: root

    required property var model
    readonly property var permissions: model ? model.permissions : null

    Column {
        anchors.centerIn: parent
        width: 668
        spacing: 12

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Enable lookup access")
            font: Theme.font(34, Font.DemiBold)

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("These permissions let Velmora detect text under the cursor\nand fall back to OCR in stubborn apps.")
            font: Theme.title3()
            color: Theme.secondaryLabel
            horizontalAlignment: Text.AlignHCenter

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Item {
            width: 1
            height: 10
        }

        PermissionRow {
            objectName: "accessibility"
            width: parent.width
            title: qsTr("Accessibility")
            detail: qsTr("Reads native text near the cursor and monitors hover dwell.")
            granted: root.permissions?.accessibilityGranted ?? false
            requestTitle: qsTr("Request")
            settingsTitle: qsTr("Open Settings")
            onRequest: root.permissions.requestAccessibility()
            onOpenSettings: root.permissions.openAccessibilitySettings()
        }

        PermissionRow {
            objectName: "screenRecording"
            width: parent.width
            title: qsTr("Screen Recording")
            detail: qsTr("Captures a small region for OCR when an app does not expose text.")
            granted: root.permissions?.screenRecordingGranted ?? false
            requestTitle: qsTr("Request")
            settingsTitle: qsTr("Open Settings")
            onRequest: root.permissions.requestScreenRecording()
            onOpenSettings: root.permissions.openScreenRecordingSettings()
        }

        Item {
            width: parent.width
            height: 44

            Row {
                anchors.verticalCenter: parent.verticalCenter
                x: 18
                spacing: 12

                ToggleSwitch {
                    objectName: "hoverSwitch"
                    anchors.verticalCenter: parent.verticalCenter
                    name: qsTr("Enable hover lookup")
                    checked: root.model?.hoverLookupEnabled ?? false
                    onToggled: checked => root.model.hoverLookupEnabled = checked
                }

                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Enable hover lookup")
                    font: Theme.headline()
                }
            }

            PushButton {
                objectName: "refresh"
                anchors.right: parent.right
                anchors.rightMargin: 18
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Refresh")
                symbol: "arrow.clockwise"
                onClicked: root.model.refreshPermissions()
            }
        }
    }
}
