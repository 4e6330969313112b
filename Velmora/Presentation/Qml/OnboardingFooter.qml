// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Moves between the steps.
Item {
    id: root

    required property int step
    required property int lastStep
    required property string completionTitle

    readonly property bool isLast: step === lastStep

    signal back
    signal forward

    implicitHeight: 84

    Divider {
        x: 1
        width: root.width - 2
    }

    PushButton {
        objectName: "back"
        x: 28
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 38
        horizontalPadding: 18
        text: qsTr("Back")
        symbol: "chevron.left"
        enabled: root.step > 0
        onClicked: root.back()
    }

    Column {
        x: Math.round((root.width - width) / 2)
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        StepDots {
            objectName: "dots"
            anchors.horizontalCenter: parent.horizontalCenter
            current: root.step
            count: root.lastStep + 1
        }

        Label {
            objectName: "caption"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 180
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Velmora will keep running from the menu bar.")
            font: Theme.caption()
            color: Theme.secondaryLabel

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    PushButton {
        objectName: "main"
        anchors.right: parent.right
        anchors.rightMargin: 28
        anchors.verticalCenter: parent.verticalCenter
        implicitHeight: 38
        horizontalPadding: 20
        text: root.isLast ? root.completionTitle : qsTr("Continue")
        symbol: root.isLast ? "checkmark" : "chevron.right"
        symbolTrails: !root.isLast
        prominent: true
        onClicked: root.forward()
    }
}
