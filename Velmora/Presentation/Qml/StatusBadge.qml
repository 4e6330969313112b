// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Whether the desktop has granted something.
Row {
    id: root

    required property bool granted
    readonly property string text: granted ? qsTr("Granted") : qsTr("Needed")
    readonly property string symbol: granted ? "checkmark.circle.fill" : "exclamationmark.circle.fill"
    readonly property color color: granted ? Theme.green : Theme.orange

    spacing: 4

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        name: root.symbol
        color: root.color
    }

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        font: Theme.caption()
        color: root.color
    }
}
