// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Text of the dictionary or of another program: never read as markup. Its lines are as high as the
// theme says, whatever fonts they mix.
Item {
    id: root

    property alias text: label.text
    property alias font: label.font
    property alias color: label.color
    property alias wrapMode: label.wrapMode
    property alias elide: label.elide
    property alias maximumLineCount: label.maximumLineCount
    property alias horizontalAlignment: label.horizontalAlignment
    readonly property alias lineCount: label.lineCount
    readonly property alias truncated: label.truncated
    readonly property real lineHeight: Theme.lineHeight(font)

    implicitWidth: label.implicitWidth
    implicitHeight: label.lineCount * lineHeight
    baselineOffset: Theme.lineBaseline(font)

    Text {
        id: label

        y: root.baselineOffset - baselineOffset
        width: root.width
        textFormat: Text.PlainText
        color: Theme.label
        lineHeightMode: Text.FixedHeight
        lineHeight: root.lineHeight
    }
}
