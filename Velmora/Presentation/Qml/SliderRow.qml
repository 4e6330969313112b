// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A line of a form with a slider and what it stands at.
FormRow {
    id: root

    required property real source
    required property real minimumValue
    required property real maximumValue
    required property real stepSize
    required property int factor
    required property string unit
    required property real readingWidth

    signal edited(real value)

    namesControls: true

    ValueSlider {
        id: slider

        objectName: "slider"
        anchors.verticalCenter: parent.verticalCenter
        width: 314 - root.readingWidth // The sliders of a form begin below one another.
        name: root.text
        source: root.source
        minimumValue: root.minimumValue
        maximumValue: root.maximumValue
        stepSize: root.stepSize
        factor: root.factor
        onEdited: value => root.edited(value)
    }

    MonospacedDigits {
        objectName: "reading"
        anchors.verticalCenter: parent.verticalCenter
        width: root.readingWidth
        text: slider.reading + root.unit
        font: Theme.body()
        color: Theme.secondaryLabel
    }
}
