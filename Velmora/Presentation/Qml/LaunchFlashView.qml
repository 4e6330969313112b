// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The badge that says, shortly after the start, that the program runs.
Item {
    id: root

    required property real cornerRadius

    implicitWidth: Math.ceil(content.implicitWidth) + 2 * 22
    implicitHeight: Math.ceil(content.implicitHeight) + 2 * 16

    // Nothing blurs what lies below; under the thin material this veil keeps it from being read
    // together with the badge.
    Material {
        anchors.fill: parent
        radius: root.cornerRadius
        fill: Theme.compositing ? Qt.alpha(Theme.window, 0.8) : Theme.window
        fillsCorners: !Theme.compositing
    }

    Material {
        anchors.fill: parent
        radius: root.cornerRadius
        fill: Qt.alpha(Theme.material, 0.58)
        fillsCorners: !Theme.compositing
        stroke: Qt.rgba(1, 1, 1, 0.38)
    }

    Row {
        id: content

        x: 22
        y: 16
        spacing: 14

        Label {
            objectName: "mark"
            anchors.verticalCenter: parent.verticalCenter
            text: "知道"
            font: Theme.font(32, Font.DemiBold)
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Label {
                objectName: "name"
                text: "Velmora"
                font: Theme.headline()
            }

            Label {
                objectName: "note"
                text: qsTr("Running in your menu bar")
                font: Theme.subheadline()
                color: Theme.secondaryLabel
            }
        }
    }
}
