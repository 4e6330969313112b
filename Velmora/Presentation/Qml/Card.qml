// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The ground of both dictionary cards: content at the top leading corner, 18 points from every
// edge, on the material.
Item {
    id: root

    default property alias content: content.data
    readonly property real padding: 18
    readonly property real cornerRadius: 8
    readonly property bool isCut: implicitHeight > height

    Material {
        anchors.fill: parent
        radius: root.cornerRadius
        fill: Theme.material
        fillsCorners: !Theme.compositing
        stroke: Theme.materialStroke
    }

    Item {
        id: content

        x: root.padding
        y: root.padding
        width: root.width - 2 * root.padding
        height: root.height - 2 * root.padding
    }

    // What the panel has no room for fades out towards its lower edge.
    Rectangle {
        x: 1
        y: root.height - height - 1
        width: root.width - 2
        height: 30
        radius: root.cornerRadius - 1
        visible: root.isCut
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.alpha(Theme.material, 0) }
            GradientStop { position: 1; color: Theme.material }
        }
    }
}
