// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The level of a word on a tinted capsule.
Rectangle {
    id: root

    required property string text
    required property font font
    required property real horizontalPadding
    required property real verticalPadding

    implicitWidth: label.implicitWidth + 2 * horizontalPadding
    implicitHeight: label.implicitHeight + 2 * verticalPadding
    baselineOffset: verticalPadding + label.baselineOffset
    radius: height / 2
    color: Qt.alpha(Theme.blue, 0.12)

    Label {
        id: label

        x: root.horizontalPadding
        y: root.verticalPadding
        text: root.text
        font: root.font
        color: Theme.blue
    }
}
