// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The dictionary card of one word.
Card {
    id: root

    required property lookupItem result
    required property bool toneColorsEnabled
    required property real fontScale

    signal speak(string text)

    readonly property font bodyFont: Theme.font(14 * fontScale)

    implicitWidth: 360
    implicitHeight: sections.implicitHeight + 2 * padding

    Column {
        id: sections

        width: parent.width
        spacing: 14

        EntryHeader {
            objectName: "header"
            width: sections.width
            result: root.result
            toneColorsEnabled: root.toneColorsEnabled
            fontScale: root.fontScale
            onSpeak: text => root.speak(text)
        }

        Divider {
            objectName: "divider"
            width: sections.width
        }

        Column {
            objectName: "definitions"
            width: sections.width
            spacing: 8

            Repeater {
                model: root.result.definitions

                DefinitionRow {
                    required property var modelData

                    width: sections.width
                    definition: modelData
                    font: root.bodyFont
                }
            }
        }

        Column {
            objectName: "breakdown"
            width: sections.width
            topPadding: 2
            spacing: 7
            visible: breakdownRows.count > 0

            Label {
                objectName: "breakdownTitle"
                text: qsTr("Character Breakdown")
                font: Theme.headline()
            }

            Repeater {
                id: breakdownRows

                model: root.result.breakdown

                BreakdownRow {
                    required property var modelData

                    width: sections.width
                    character: modelData
                    font: root.bodyFont
                }
            }
        }

        EntryExample {
            objectName: "example"
            width: sections.width
            visible: root.result.hasExample
            result: root.result
            fontScale: root.fontScale
            onSpeak: text => root.speak(text)
        }
    }
}
