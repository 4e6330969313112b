// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The content of the update window: what there is, what is new in it, and what to do about it.
FocusScope {
    id: root

    // "message", "checking", "available" or "downloading".
    property string phase: "message"
    property string message
    property string version
    property string currentVersion
    property string releaseNotes
    property real progress: 0

    readonly property bool hasOffer: phase === "available" || phase === "downloading"
    readonly property string heading: {
        if (phase === "checking")
            return qsTr("Checking for updates…");
        return hasOffer ? qsTr("Velmora %1 is available").arg(version) : message;
    }
    readonly property string detail: {
        if (phase === "downloading")
            return qsTr("Downloading, %1%").arg(Math.floor(progress * 100));
        if (hasOffer && message !== "")
            return message;
        return currentVersion !== "" && !message.includes(currentVersion) ? qsTr("You have version %1.").arg(currentVersion) : "";
    }

    signal install
    signal later

    implicitWidth: 480
    implicitHeight: hasOffer ? 400 : Math.ceil(head.implicitHeight) + 30 + 24 + 2 * 20

    Keys.onEscapePressed: later()
    Keys.onReturnPressed: if (phase === "available") install()

    Row {
        id: head

        x: 20
        y: 20
        width: parent.width - 40
        spacing: 14

        Rectangle {
            id: mark

            width: 52
            height: 52
            radius: 12
            color: Theme.tint

            Label {
                anchors.centerIn: parent
                text: "知"
                font: Theme.font(30, Font.DemiBold)
                color: "white"
            }
        }

        Column {
            width: parent.width - mark.width - parent.spacing
            anchors.verticalCenter: parent.verticalCenter
            spacing: 3

            Label {
                objectName: "heading"
                width: parent.width
                text: root.heading
                font: root.hasOffer ? Theme.title3(Font.DemiBold) : Theme.headline()
                wrapMode: Text.Wrap
                maximumLineCount: 4
                elide: Text.ElideRight

                Accessible.role: Accessible.Heading
                Accessible.name: text
            }

            Label {
                objectName: "detail"
                width: parent.width
                visible: text !== ""
                text: root.detail
                font: Theme.subheadline()
                color: Theme.secondaryLabel
                elide: Text.ElideRight

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }

    Rectangle {
        id: notesGround

        x: 20
        y: head.y + head.height + 16
        width: parent.width - 40
        height: buttons.y - y - 16 - (bar.visible ? bar.height + 12 : 0)
        visible: root.hasOffer
        radius: 10
        color: Theme.group
        border.color: Qt.alpha(Theme.separator, Theme.separator.a * 0.5)

        Flickable {
            id: flick

            anchors.fill: parent
            anchors.margins: 1
            contentWidth: width
            contentHeight: notes.height + 24
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            activeFocusOnTab: contentHeight > height

            Keys.onUpPressed: contentY = Math.max(0, contentY - 40)
            Keys.onDownPressed: contentY = Math.max(0, Math.min(contentHeight - height, contentY + 40))
            Keys.onPressed: event => {
                const pages = { [Qt.Key_PageUp]: -1, [Qt.Key_PageDown]: 1, [Qt.Key_Home]: -1e6,
                                [Qt.Key_End]: 1e6 };
                if (event.key in pages) {
                    const target = contentY + pages[event.key] * (height - 40);
                    contentY = Math.max(0, Math.min(contentHeight - height, target));
                    event.accepted = true;
                }
            }

            Label {
                id: notes

                objectName: "notes"
                x: 14
                y: 12
                width: flick.width - 28
                text: root.releaseNotes !== "" ? root.releaseNotes
                                               : qsTr("This version comes without release notes.")
                color: root.releaseNotes !== "" ? Theme.label : Theme.secondaryLabel
                font: Theme.body()
                wrapMode: Text.Wrap

                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        ScrollIndicator {
            anchors.right: parent.right
            anchors.rightMargin: 3
            y: 4
            height: parent.height - 8
            view: flick
        }

        FocusRing {
            control: flick
            radius: 13
        }
    }

    Rectangle {
        id: bar

        objectName: "progressBar"
        x: 20
        y: buttons.y - height - 16
        width: parent.width - 40
        height: 6
        radius: 3
        visible: root.phase === "downloading"
        color: Theme.control

        Accessible.role: Accessible.ProgressBar
        Accessible.name: root.detail

        Rectangle {
            objectName: "progressFill"
            width: parent.width * Math.max(0, Math.min(1, root.progress))
            height: parent.height
            radius: 3
            color: Theme.tint
        }
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: 20
        y: root.height - height - 20
        spacing: 10

        PushButton {
            objectName: "later"
            text: root.hasOffer ? qsTr("Later") : root.phase === "checking" ? qsTr("Cancel")
                                                                            : qsTr("Close")
            horizontalPadding: 18
            onClicked: root.later()
        }

        PushButton {
            objectName: "install"
            visible: root.hasOffer
            enabled: root.phase === "available"
            text: qsTr("Install")
            prominent: true
            horizontalPadding: 18
            onClicked: root.install()
        }
    }
}
