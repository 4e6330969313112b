// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The content of the settings window: every control shows and changes the model's own value.
FocusScope {
    id: root

    // The program's model.
    required property var model

    readonly property var permissions: model ? model.permissions : null
    readonly property real padding: 18
    readonly property real noteHeight: 30

    implicitWidth: 520
    implicitHeight: Math.ceil(form.implicitHeight) + 2 * padding

    Keys.onEscapePressed: Window.window.close()

    // A control that gets the focus comes into sight.
    function reveal(item: Item) {
        if (!item || item === root)
            return;
        const top = item.mapToItem(form, 0, 0).y - padding;
        const bottom = top + item.height + 2 * padding;
        if (top < flick.contentY)
            flick.contentY = Math.max(0, top);
        else if (bottom + padding > flick.contentY + flick.height)
            flick.contentY = Math.min(flick.contentHeight - flick.height, bottom + padding - flick.height);
        // The note below the last control belongs to it.
        if (flick.contentHeight - bottom < noteHeight + 2 * padding)
            flick.contentY = flick.contentHeight - flick.height;
    }

    Connections {
        target: root.Window.window
        function onActiveFocusItemChanged() {
            if (flick.interactive)
                root.reveal(root.Window.window.activeFocusItem);
        }
    }

    Component.onCompleted: model.refreshPermissions()

    Flickable {
        id: flick

        anchors.fill: parent
        contentWidth: width
        contentHeight: root.implicitHeight
        interactive: contentHeight > height
        boundsBehavior: Flickable.StopAtBounds

        Column {
            id: form

            x: root.padding
            y: root.padding
            width: root.width - 2 * root.padding
            spacing: 18

            FormSection {
                title: qsTr("Lookup")

                ToggleRow {
                    objectName: "hoverLookupEnabled"
                    text: qsTr("Hover lookup enabled")
                    checked: root.model.hoverLookupEnabled
                    onToggled: checked => root.model.hoverLookupEnabled = checked
                }

                SliderRow {
                    objectName: "dwellDelay"
                    text: qsTr("Dwell delay")
                    source: root.model.dwellDelay
                    minimumValue: 0.1
                    maximumValue: 0.8
                    stepSize: 0.05
                    factor: 1000
                    unit: qsTr(" ms")
                    readingWidth: 64
                    onEdited: value => root.model.dwellDelay = value
                }

                FormRow {
                    text: qsTr("Script preference")
                    namesControls: true

                    SegmentedPicker {
                        objectName: "preferredScript"
                        name: qsTr("Script preference")
                        options: [{ text: qsTr("Simplified"), tag: "simplified" },
                                  { text: qsTr("Traditional"), tag: "traditional" }]
                        current: root.model.preferredScript
                        onPicked: tag => root.model.preferredScript = tag
                    }
                }
            }

            FormSection {
                title: qsTr("Popover")

                ToggleRow {
                    objectName: "toneColorsEnabled"
                    text: qsTr("Tone colors")
                    checked: root.model.toneColorsEnabled
                    onToggled: checked => root.model.toneColorsEnabled = checked
                }

                ToggleRow {
                    objectName: "autoPronounce"
                    text: qsTr("Auto-pronounce on lookup")
                    checked: root.model.autoPronounce
                    onToggled: checked => root.model.autoPronounce = checked
                }

                SliderRow {
                    objectName: "popoverFontScale"
                    text: qsTr("Font size")
                    source: root.model.popoverFontScale
                    minimumValue: 0.7
                    maximumValue: 1.5
                    stepSize: 0.05
                    factor: 100
                    unit: "%"
                    readingWidth: 48
                    onEdited: value => root.model.popoverFontScale = value
                }
            }

            FormSection {
                title: qsTr("Permissions")

                GrantRow {
                    objectName: "accessibility"
                    text: qsTr("Accessibility")
                    granted: root.permissions?.accessibilityGranted ?? false
                    onOpenSettings: root.permissions.openAccessibilitySettings()
                }

                GrantRow {
                    objectName: "screenRecording"
                    text: qsTr("Screen Recording")
                    granted: root.permissions?.screenRecordingGranted ?? false
                    onOpenSettings: root.permissions.openScreenRecordingSettings()
                }

                FormRow {
                    PushButton {
                        objectName: "refresh"
                        text: qsTr("Refresh permissions")
                        symbol: "arrow.clockwise"
                        onClicked: root.model.refreshPermissions()
                    }
                }
            }

            FormSection {
                title: qsTr("Privacy")

                ToggleRow {
                    objectName: "analyticsEnabled"
                    text: qsTr("Share anonymous usage analytics")
                    checked: root.model.analyticsEnabled
                    onToggled: checked => root.model.analyticsEnabled = checked
                }

                Item {
                    width: parent.width
                    height: note.height + 12

                    Label {
                        id: note

                        objectName: "privacyNote"
                        x: 14
                        text: qsTr("Velmora never sends looked-up text.")
                        font: Theme.caption()
                        color: Theme.secondaryLabel

                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }
        }
    }

    ScrollIndicator {
        anchors.right: parent.right
        anchors.rightMargin: 3
        y: 4
        height: parent.height - 8
        view: flick
    }
}
