// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// One word of a selection, with a hairline under it.
Item {
    id: root

    required property lookupItem result
    required property bool toneColorsEnabled
    required property real fontScale

    signal speak(string text)

    readonly property real bottomPadding: 10

    implicitHeight: Math.max(headword.height, details.y + details.height) + bottomPadding

    ToneColoredHeadword {
        id: headword

        objectName: "headword"
        characters: root.result.headword
        enabled: root.toneColorsEnabled
        fontSize: 24 * root.fontScale
        traditional: root.result.traditional
        maximumWidth: 68
    }

    Item {
        id: details

        readonly property real spacing: 8
        readonly property real firstBaseline: Math.max(pinyin.baselineOffset, speaker.baselineOffset,
                                                  badge.visible ? badge.baselineOffset : 0)
        readonly property real firstLineHeight: Math.max(
            pinyin.y + pinyin.height, speaker.y + speaker.height,
            badge.visible ? badge.y + badge.height : 0)

        objectName: "details"
        x: 68 + 12
        width: root.width - x
        height: glosses.y + glosses.height

        Label {
            id: pinyin

            readonly property real trailing: (badge.visible ? badge.width + details.spacing : 0)
                                             + 2 * details.spacing + speaker.width

            objectName: "pinyin"
            y: details.firstBaseline - baselineOffset
            width: Math.min(implicitWidth, details.width - trailing)
            text: root.result.pinyinMarked
            font: Theme.font(15 * root.fontScale, Font.Medium)
            color: Theme.secondaryLabel
            wrapMode: Text.Wrap
        }

        HskBadge {
            id: badge

            objectName: "badge"
            x: pinyin.width + details.spacing
            y: details.firstBaseline - baselineOffset
            visible: text.length > 0
            text: root.result.hskBadge
            font: Theme.caption2(Font.DemiBold)
            horizontalPadding: 6
            verticalPadding: 2
        }

        SymbolButton {
            id: speaker

            objectName: "speaker"
            x: details.width - width
            y: details.firstBaseline - baselineOffset
            symbol: "speaker.wave.2.fill"
            size: 14 * root.fontScale
            help: qsTr("Pronounce")
            onClicked: root.speak(root.result.simplified)
        }

        Label {
            id: glosses

            objectName: "glosses"
            y: details.firstLineHeight + 5
            width: details.width
            text: root.result.firstGlosses
            font: Theme.font(14 * root.fontScale)
            wrapMode: Text.Wrap
        }
    }

    Divider {
        objectName: "rowDivider"
        y: root.height - height
        width: root.width
    }
}
