// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The content of the first window: what the program is, how it works, and what it needs.
FocusScope {
    id: root

    // The program's model.
    required property var model
    required property bool isFirstLaunch
    required property string completionTitle

    readonly property real cornerRadius: 30

    // The steps are welcome (0), lookup (1) and permissions (2).
    readonly property int lastStep: 2
    property int step: 0
    property int previousStep: 0
    property int transitionDirection: 1

    // The window opens with its first step; the others are made one by one after it, unless the
    // user is there sooner.
    property int madeStep: 0

    // Seconds since the last move. The transition is a critically damped spring: a displacement of
    // one is (1 + ωt)·exp(−ωt) after t seconds, with ω = 2π / response.
    property real elapsed: settled
    readonly property real response: 0.38
    readonly property real settled: 0.7
    readonly property real displacement: {
        const angle = 2 * Math.PI / response * elapsed;
        return elapsed >= settled ? 0 : (1 + angle) * Math.exp(-angle);
    }

    signal complete

    function move(target: int) {
        if (target === step || target < 0 || target > lastStep)
            return;
        transitionDirection = target > step ? 1 : -1;
        previousStep = step;
        step = target;
        transition.restart();
    }

    function forward() {
        if (step === lastStep)
            complete();
        else
            move(step + 1);
    }

    implicitWidth: 720
    implicitHeight: 680

    Keys.onEscapePressed: complete()
    Keys.onReturnPressed: forward()
    Keys.onEnterPressed: forward()

    // Between the frames of the window's way to the screen rather than on top of one.
    Timer {
        interval: 50
        repeat: true
        running: root.madeStep < root.lastStep
        onTriggered: ++root.madeStep
    }

    NumberAnimation {
        id: transition

        target: root
        property: "elapsed"
        from: 0
        to: root.settled
        duration: root.settled * 1000
    }

    Material {
        anchors.fill: parent
        radius: root.cornerRadius
        fill: Theme.window
        fillsCorners: !Theme.compositing
        stroke: Theme.separator
    }

    MouseArea {
        anchors.fill: parent
        onPressed: root.Window.window.startSystemMove()
    }

    Item {
        id: steps

        x: 1
        y: 56
        width: root.width - 2
        height: footer.y - y
        clip: true

        component Step: Item {
            required property int index
            required property Component content
            readonly property bool isCurrent: index === root.step
            readonly property bool isLeaving: index === root.previousStep && !isCurrent
                                              && root.displacement > 0

            x: (isCurrent ? root.displacement : root.displacement - 1)
               * root.transitionDirection * steps.width
            width: steps.width
            height: steps.height
            opacity: isCurrent ? 1 - root.displacement : root.displacement
            visible: isCurrent || isLeaving
            enabled: isCurrent

            Loader {
                anchors.fill: parent
                active: parent.index <= Math.max(root.madeStep, root.step, root.previousStep)
                sourceComponent: parent.content
            }
        }

        Step {
            objectName: "welcome"
            index: 0
            content: Component {
                OnboardingWelcome {}
            }
        }

        Step {
            id: lookup

            objectName: "lookup"
            index: 1
            content: Component {
                OnboardingLookup {
                    playing: lookup.visible
                }
            }
        }

        Step {
            objectName: "permissions"
            index: 2
            content: Component {
                OnboardingPermissions {
                    model: root.model
                }
            }
        }
    }

    OnboardingFooter {
        id: footer

        width: root.width
        y: root.height - height
        step: root.step
        lastStep: root.lastStep
        completionTitle: root.completionTitle
        onBack: root.move(root.step - 1)
        onForward: root.forward()
    }

    // Last, so that it comes last on the way of the keyboard too.
    Item {
        id: close

        objectName: "close"
        x: root.width - width - 18
        y: 18
        width: 30
        height: 30
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Close")
        Accessible.focusable: true
        Accessible.focused: activeFocus
        Accessible.onPressAction: root.complete()

        Keys.onSpacePressed: root.complete()
        Keys.onReturnPressed: root.complete()
        Keys.onEnterPressed: root.complete()

        Rectangle {
            anchors.fill: parent
            radius: width / 2
            color: Theme.label
            opacity: closeMouse.pressed ? 0.2 : closeMouse.containsMouse ? 0.13 : 0.07
        }

        Symbol {
            anchors.centerIn: parent
            width: 13
            height: 13
            name: "xmark"
            color: closeMouse.containsMouse ? Theme.label : Theme.secondaryLabel
        }

        MouseArea {
            id: closeMouse

            anchors.fill: parent
            hoverEnabled: true
            onClicked: root.complete()
        }

        HelpTag {
            text: qsTr("Close")
            target: close
            active: closeMouse.containsMouse && !closeMouse.pressed
        }

        FocusRing {
            control: close
            radius: width / 2
        }
    }
}
