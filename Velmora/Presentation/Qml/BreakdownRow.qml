// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// One character of a word: itself, its reading in a column, its first glosses on one line.
Item {
    id: root

    required property breakdownItem character
    required property font font

    readonly property real firstBaseline: Math.max(hanzi.baselineOffset, pinyin.baselineOffset,
                                              glosses.baselineOffset)

    implicitHeight: Math.max(hanzi.y + hanzi.height, pinyin.y + pinyin.height,
                             glosses.y + glosses.height)

    Label {
        id: hanzi

        objectName: "hanzi"
        y: root.firstBaseline - baselineOffset
        text: root.character.simplified
        font: Theme.title3(Font.DemiBold)
    }

    FittedLabel {
        id: pinyin

        objectName: "pinyin"
        x: hanzi.width + 8
        y: root.firstBaseline - baselineOffset
        width: 54
        text: root.character.pinyinMarked
        font: root.font
        color: Theme.secondaryLabel
    }

    Label {
        id: glosses

        objectName: "glosses"
        x: pinyin.x + pinyin.width + 8
        y: root.firstBaseline - baselineOffset
        width: root.width - x
        text: root.character.glosses
        font: root.font
        maximumLineCount: 1
        elide: Text.ElideRight
    }
}
