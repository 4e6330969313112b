// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A short reading whose digits are all as wide as the widest of them, so that it does not jitter
// while its value changes. It ends at the item's trailing edge.
Item {
    id: root

    required property string text
    required property font font
    property color color: Theme.label

    implicitWidth: characters.implicitWidth
    implicitHeight: Theme.lineHeight(font)
    baselineOffset: Theme.lineBaseline(font)
    clip: characters.implicitWidth > width

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Row {
        id: characters

        readonly property real digitWidth: Theme.digitWidth(root.font)

        anchors.right: parent.right

        Repeater {
            model: root.text.length

            Label {
                required property int index
                readonly property string character: root.text.charAt(index)

                width: character >= "0" && character <= "9" ? characters.digitWidth : implicitWidth
                text: character
                font: root.font
                color: root.color
                horizontalAlignment: Text.AlignHCenter
            }
        }
    }
}
