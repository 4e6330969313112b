// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A sentence that shows the word in use.
Column {
    id: root

    required property lookupItem result
    required property real fontScale

    signal speak(string text)

    topPadding: 2
    spacing: 6

    Item {
        objectName: "exampleHeader"
        width: root.width
        height: Math.max(title.implicitHeight, speaker.implicitHeight)

        Label {
            id: title

            objectName: "exampleTitle"
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Example")
            font: Theme.headline()
        }

        SymbolButton {
            id: speaker

            objectName: "exampleSpeaker"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            symbol: "speaker.wave.1.fill"
            size: 14 * root.fontScale
            help: qsTr("Pronounce example")
            onClicked: root.speak(root.result.exampleHanzi)
        }
    }

    Label {
        objectName: "exampleHanzi"
        width: root.width
        text: root.result.exampleHanzi
        font: Theme.font(16 * root.fontScale, Font.Medium)
        wrapMode: Text.Wrap
    }

    Label {
        objectName: "examplePinyin"
        width: root.width
        text: root.result.examplePinyin
        font: Theme.font(14 * root.fontScale)
        color: Theme.secondaryLabel
        wrapMode: Text.Wrap
    }

    Label {
        objectName: "exampleEnglish"
        width: root.width
        text: root.result.exampleEnglish
        font: Theme.font(14 * root.fontScale)
        color: Theme.secondaryLabel
        wrapMode: Text.Wrap
    }
}
