// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// What the program is.
Item {
    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 6

        Label {
            objectName: "mark"
            anchors.horizontalCenter: parent.horizontalCenter
            text: "知道"
            font: Theme.font(72, Font.DemiBold)
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Velmora"
            font: Theme.font(40, Font.DemiBold)

            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Understand Chinese wherever you read it.")
            font: Theme.title3(Font.Medium)
            color: Theme.secondaryLabel

            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Item {
            width: 1
            height: 26
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12

            FeaturePill {
                objectName: "pill"
                icon: "cursorarrow.motionlines"
                title: qsTr("Hover")
            }

            FeaturePill {
                objectName: "pill"
                icon: "character.book.closed"
                title: qsTr("Learn")
            }

            FeaturePill {
                objectName: "pill"
                icon: "speaker.wave.2.fill"
                title: qsTr("Listen")
            }
        }
    }
}
