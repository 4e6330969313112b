// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A word whose characters wear the colours of their tones while `enabled`. Drawn smaller, on the
// same baseline, where it is wider than `maximumWidth`.
Item {
    id: root

    required property var characters
    required property real fontSize
    property bool traditional: false
    property real maximumWidth: Infinity

    readonly property real naturalWidth: row.implicitWidth
    readonly property real squeeze: Math.min(1, maximumWidth / Math.max(1, naturalWidth))
    readonly property font characterFont: Theme.font(fontSize, Font.DemiBold, traditional)

    implicitWidth: naturalWidth * squeeze
    implicitHeight: row.implicitHeight
    baselineOffset: Theme.lineBaseline(characterFont)

    Row {
        id: row

        spacing: 1
        transform: Scale {
            origin.y: root.baselineOffset
            xScale: root.squeeze
            yScale: root.squeeze
        }

        Repeater {
            model: root.characters

            Label {
                required property var modelData

                anchors.verticalCenter: parent.verticalCenter
                text: modelData.text
                font: root.characterFont
                color: root.enabled ? Theme.toneColors[modelData.tone + 1] : Theme.label
            }
        }
    }
}
