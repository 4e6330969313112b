// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A slider that moves in steps. It shows `source` and asks for another value; whoever owns the
// value changes it.
Item {
    id: root

    required property real source
    required property real minimumValue
    required property real maximumValue
    required property real stepSize
    required property string name

    // What one is multiplied with to be read as a whole number: the steps are made so that the
    // product is never a hair below it.
    required property int factor

    // Assistive programs read and write this.
    property real value: minimumValue

    readonly property string reading: String(Math.trunc(source * factor))
    readonly property real position: Math.max(0, Math.min(1, (source - minimumValue)
                                                             / (maximumValue - minimumValue)))

    signal edited(real value)

    // The nearest step to a value.
    function snapped(value: real): real {
        const stepsPerOne = Math.round(1 / stepSize);
        const first = Math.round(minimumValue * stepsPerOne);
        const last = Math.round(maximumValue * stepsPerOne);
        const step = Math.max(first, Math.min(last, Math.round(value * stepsPerOne)));
        const result = step / stepsPerOne;
        const whole = Math.round(result * factor);
        return Math.trunc(result * factor) === whole ? result : result + Number.EPSILON;
    }

    function propose(value: real) {
        const step = snapped(value);
        if (step !== source)
            edited(step);
        root.value = source;
    }

    function stepBy(steps: int) {
        propose(snapped(source) + steps * stepSize);
    }

    implicitWidth: 160
    implicitHeight: 24
    activeFocusOnTab: true

    Accessible.role: Accessible.Slider
    Accessible.name: name
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onIncreaseAction: root.stepBy(1)
    Accessible.onDecreaseAction: root.stepBy(-1)

    Component.onCompleted: value = source
    onSourceChanged: value = source
    onValueChanged: if (value !== source) propose(value)

    Keys.onLeftPressed: stepBy(-1)
    Keys.onDownPressed: stepBy(-1)
    Keys.onRightPressed: stepBy(1)
    Keys.onUpPressed: stepBy(1)
    Keys.onPressed: event => {
        const values = { [Qt.Key_Home]: minimumValue, [Qt.Key_End]: maximumValue,
                         [Qt.Key_PageDown]: source - 4 * stepSize,
                         [Qt.Key_PageUp]: source + 4 * stepSize };
        if (event.key in values) {
            propose(values[event.key]);
            event.accepted = true;
        }
    }

    Rectangle {
        id: track

        y: (root.height - height) / 2
        width: root.width
        height: 4
        radius: 2
        color: Theme.control

        Rectangle {
            width: knob.x + knob.width / 2
            height: parent.height
            radius: 2
            color: Theme.tint
        }
    }

    Rectangle {
        id: knob

        objectName: "knob"
        x: root.position * (root.width - width)
        y: (root.height - height) / 2
        width: 20
        height: 20
        radius: 10
        color: drag.pressed ? "#f0f0f2" : "white"
        border.color: Qt.rgba(0, 0, 0, 0.22)

        FocusRing {
            control: root
            radius: width / 2
        }
    }

    MouseArea {
        id: drag

        function follow(x: real) {
            root.propose(root.minimumValue + (x - knob.width / 2) / (root.width - knob.width)
                         * (root.maximumValue - root.minimumValue));
        }

        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => follow(mouse.x)
        onPositionChanged: mouse => follow(mouse.x)
    }
}
