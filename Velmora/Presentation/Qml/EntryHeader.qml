// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// Headword, reading, speaker and level on one first baseline. A reading that is too long wraps, a
// headword that is too long is drawn smaller.
Item {
    id: root

    required property lookupItem result
    required property bool toneColorsEnabled
    required property real fontScale

    signal speak(string text)

    readonly property real spacing: 10
    readonly property real leastPinyinWidth: 96
    readonly property real textWidth: speaker.x - 2 * spacing
    readonly property real firstBaseline: Math.max(headword.baselineOffset, pinyin.baselineOffset,
                                              speaker.baselineOffset,
                                              badge.visible ? badge.baselineOffset : 0)

    implicitHeight: Math.max(headword.y + headword.height, pinyin.y + pinyin.height,
                             speaker.y + speaker.height, badge.visible ? badge.y + badge.height : 0)

    ToneColoredHeadword {
        id: headword

        objectName: "headword"
        y: root.firstBaseline - baselineOffset
        characters: root.result.headword
        enabled: root.toneColorsEnabled
        fontSize: 30 * root.fontScale
        traditional: root.result.traditional
        maximumWidth: root.textWidth - root.spacing
                      - Math.min(pinyin.implicitWidth, root.leastPinyinWidth)
    }

    Label {
        id: pinyin

        objectName: "pinyin"
        x: headword.width + root.spacing
        y: root.firstBaseline - baselineOffset
        width: Math.min(implicitWidth, root.textWidth - x)
        text: root.result.pinyinMarked
        font: Theme.font(18 * root.fontScale, Font.Medium)
        color: Theme.secondaryLabel
        wrapMode: Text.Wrap
    }

    SymbolButton {
        id: speaker

        objectName: "speaker"
        x: root.width - width - (badge.visible ? badge.width + root.spacing : 0)
        y: root.firstBaseline - baselineOffset
        symbol: "speaker.wave.2.fill"
        size: 14 * root.fontScale
        help: qsTr("Pronounce")
        onClicked: root.speak(root.result.simplified)
    }

    HskBadge {
        id: badge

        objectName: "badge"
        x: root.width - width
        y: root.firstBaseline - baselineOffset
        visible: text.length > 0
        text: root.result.hskBadge
        font: Theme.caption(Font.DemiBold)
        horizontalPadding: 7
        verticalPadding: 3
    }
}
