// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// How a lookup goes.
Item {
    id: root

    property bool playing: false

    Column {
        anchors.centerIn: parent
        spacing: 10

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Velmora runs quietly from the menu bar")
            font: Theme.font(28, Font.DemiBold)

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Velmora lives in the menu bar and opens a compact dictionary\npopover over Chinese text.")
            font: Theme.title3()
            color: Theme.secondaryLabel
            horizontalAlignment: Text.AlignHCenter

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Item {
            width: 1
            height: 2
        }

        Rectangle {
            objectName: "demoFrame"
            anchors.horizontalCenter: parent.horizontalCenter
            width: 520
            height: 303
            radius: 14
            color: Theme.group

            AnimatedGIFView {
                objectName: "demo"
                anchors.fill: parent
                resourceName: "onboarding-demo"
                radius: parent.radius
                playing: root.playing
            }

            Material {
                anchors.fill: parent
                radius: parent.radius
                stroke: Qt.alpha(Theme.separator, Theme.separator.a * 0.6)
            }
        }

        Rectangle {
            objectName: "sampleCard"
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.ceil(sample.implicitWidth) + 36
            height: Math.ceil(sample.implicitHeight) + 14
            radius: 12
            color: Theme.group
            border.color: Qt.alpha(Theme.separator, Theme.separator.a * 0.5)

            Row {
                id: sample

                anchors.centerIn: parent
                spacing: 10

                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Hover to")
                    font: Theme.caption()
                    color: Theme.secondaryLabel
                }

                Column {
                    anchors.verticalCenter: parent.verticalCenter

                    Label {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "zhī dào"
                        font: Theme.font(11, Font.DemiBold)
                        color: Theme.blue
                    }

                    Label {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "知道"
                        font: Theme.font(22, Font.DemiBold)
                    }
                }
            }
        }
    }
}
