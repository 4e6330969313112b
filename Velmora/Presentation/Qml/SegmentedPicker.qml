// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// One of a few choices, side by side.
Item {
    id: root

    // Objects with `text` and `tag`.
    required property var options
    required property string current
    required property string name

    readonly property int currentIndex: options.findIndex(option => option.tag === current)

    signal picked(string tag)

    function moveBy(places: int) {
        const index = Math.max(0, Math.min(options.length - 1, currentIndex + places));
        if (index !== currentIndex)
            picked(options[index].tag);
    }

    implicitWidth: 216
    implicitHeight: 28
    activeFocusOnTab: true

    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: activeFocus

    Keys.onLeftPressed: moveBy(-1)
    Keys.onUpPressed: moveBy(-1)
    Keys.onRightPressed: moveBy(1)
    Keys.onDownPressed: moveBy(1)
    Keys.onSpacePressed: picked(options[(currentIndex + 1) % options.length].tag)

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Theme.control
    }

    Rectangle {
        x: 2 + root.currentIndex * width
        y: 2
        width: (root.width - 4) / root.options.length
        height: root.height - 4
        radius: 6
        visible: root.currentIndex >= 0
        color: Theme.tint

        Behavior on x { NumberAnimation { duration: 140; easing.type: Easing.OutCubic } }
    }

    Repeater {
        model: root.options

        Item {
            id: segment

            required property int index
            required property var modelData
            readonly property bool isCurrent: index === root.currentIndex

            objectName: modelData.tag
            x: 2 + index * width
            y: 2
            width: (root.width - 4) / root.options.length
            height: root.height - 4

            Accessible.role: Accessible.RadioButton
            Accessible.focusable: false
            Accessible.name: modelData.text
            Accessible.checkable: true
            Accessible.checked: isCurrent
            Accessible.onPressAction: root.picked(modelData.tag)
            Accessible.onToggleAction: root.picked(modelData.tag)

            Label {
                anchors.centerIn: parent
                text: segment.modelData.text
                font: Theme.body()
                color: segment.isCurrent ? "white" : Theme.label
            }

            MouseArea {
                anchors.fill: parent
                onClicked: root.picked(segment.modelData.tag)
            }
        }
    }

    FocusRing {
        control: root
        radius: 11
    }
}
