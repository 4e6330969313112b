// SPDX-License-Identifier: MIT
import QtQuick
import Velmora.Presentation

// The part of speech in its column, where there is one, and the glosses beside it.
Item {
    id: root

    required property definitionItem definition
    required property font font

    implicitHeight: Math.max(glosses.height, partOfSpeech.visible ? partOfSpeech.height : 0)

    FittedLabel {
        id: partOfSpeech

        objectName: "partOfSpeech"
        visible: root.definition.hasPartOfSpeech
        width: 32
        text: root.definition.partOfSpeech
        font: root.font
        color: Theme.secondaryLabel
    }

    Label {
        id: glosses

        objectName: "glosses"
        x: partOfSpeech.visible ? partOfSpeech.width + 8 : 0
        width: root.width - x
        text: root.definition.glosses
        font: root.font
        wrapMode: Text.Wrap
    }
}
