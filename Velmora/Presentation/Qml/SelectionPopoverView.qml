// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The words of a selected text, one row each, in a list that scrolls.
Card {
    id: root

    required property string selectedText
    required property var results
    required property bool toneColorsEnabled
    required property real fontScale

    signal speak(string text)

    readonly property real spacing: 14

    implicitWidth: 430
    implicitHeight: 430

    Label {
        id: title

        objectName: "title"
        text: qsTr("Selected Text")
        font: Theme.headline()
    }

    Label {
        id: text

        objectName: "selectedText"
        y: title.height + 6
        width: parent.width
        text: root.selectedText
        font: Theme.font(17 * root.fontScale, Font.Medium)
        wrapMode: Text.Wrap
        maximumLineCount: 2
        elide: Text.ElideRight
    }

    Divider {
        id: divider

        objectName: "divider"
        y: text.y + text.height + root.spacing
        width: parent.width
    }

    ListView {
        id: list

        objectName: "list"
        y: divider.y + divider.height + root.spacing
        width: parent.width
        height: parent.height - y
        clip: true
        spacing: 12
        // Dragging belongs to the indicator; the wheel is handled below.
        interactive: false
        model: root.results

        delegate: SelectedLookupRow {
            width: list.width
            toneColorsEnabled: root.toneColorsEnabled
            fontScale: root.fontScale
            onSpeak: text => root.speak(text)
        }

        WheelHandler {
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            onWheel: event => {
                const distance = event.pixelDelta.y !== 0 ? event.pixelDelta.y
                                                          : event.angleDelta.y * 0.5;
                const range = Math.max(0, list.contentHeight - list.height);
                list.contentY = list.originY + Math.max(
                    0, Math.min(range, list.contentY - list.originY - distance));
            }
        }
    }

    ScrollIndicator {
        objectName: "scrollIndicator"
        anchors.left: list.right
        anchors.leftMargin: 6
        y: list.y
        height: list.height
        view: list
    }
}
