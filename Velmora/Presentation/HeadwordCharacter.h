// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QMetaType>
#include <QString>
#include <string_view>
#include <vector>

#include "VelmoraCore/DictionaryEntry.h"

namespace velmora {

/// One character of a headword and the tone that it is coloured by.
struct HeadwordCharacter {
    Q_GADGET
    QML_VALUE_TYPE(headwordCharacter)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(int tone MEMBER tone FINAL)

  public:
    static constexpr int noTone = -1;  ///< No syllable stands at the character's position.

    QString text;       ///< One character as the reader sees it (a grapheme cluster).
    int tone = noTone;  ///< 0 neutral, 1 to 4, or `noTone`.

    bool operator==(const HeadwordCharacter&) const = default;

    /// The characters of a text, paired with the syllables of the entry purely by position.
    static std::vector<HeadwordCharacter> pair(const DictionaryEntry& entry, std::string_view text);
};

}  // namespace velmora
