// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// One permission on its card: what it is for, how it stands, and the ways to give it.
Rectangle {
    id: root

    required property string title
    required property string detail
    required property bool granted
    required property string requestTitle
    required property string settingsTitle

    readonly property real padding: 18

    signal request
    signal openSettings

    implicitHeight: Math.max(texts.implicitHeight, buttons.implicitHeight) + 2 * padding
    radius: 16
    color: Theme.group
    border.color: Qt.alpha(Theme.separator, Theme.separator.a * 0.5)

    Symbol {
        id: status

        objectName: "status"
        x: root.padding
        anchors.verticalCenter: parent.verticalCenter
        width: 26
        height: 22
        name: root.granted ? "checkmark.seal.fill" : "lock.open.trianglebadge.exclamationmark"
        color: root.granted ? Theme.green : Theme.orange

        Accessible.role: Accessible.StaticText
        Accessible.name: root.title + ": " + (root.granted ? qsTr("Granted") : qsTr("Needed"))
    }

    Column {
        id: texts

        anchors.left: status.right
        anchors.leftMargin: 16
        anchors.right: buttons.left
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Label {
            text: root.title
            font: Theme.headline()

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Label {
            // Two lines of about the same length rather than a last word of its own.
            width: implicitWidth > parent.width ? Math.min(parent.width, Math.ceil(implicitWidth * 0.62))
                                                : parent.width
            text: root.detail
            font: Theme.subheadline()
            color: Theme.secondaryLabel
            wrapMode: Text.Wrap

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: root.padding
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        PushButton {
            objectName: "request"
            text: root.requestTitle
            name: root.requestTitle + ", " + root.title
            onClicked: root.request()
        }

        PushButton {
            objectName: "openSettings"
            text: root.settingsTitle
            name: root.settingsTitle + ", " + root.title
            onClicked: root.openSettings()
        }
    }
}
