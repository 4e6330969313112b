// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// A line of a form with a switch. The whole line can be clicked.
FormRow {
    id: root

    required property bool checked

    signal toggled(bool checked)

    namesControls: true
    clickable: true
    onClicked: toggled(!checked)

    ToggleSwitch {
        objectName: "switch"
        name: root.text
        checked: root.checked
        onToggled: checked => root.toggled(checked)
    }
}
