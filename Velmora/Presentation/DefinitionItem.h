// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QMetaType>
#include <QString>

namespace velmora {

/// One row of the definitions on the entry card.
struct DefinitionItem {
    Q_GADGET
    QML_VALUE_TYPE(definitionItem)
    Q_PROPERTY(bool hasPartOfSpeech MEMBER hasPartOfSpeech FINAL)
    Q_PROPERTY(QString partOfSpeech MEMBER partOfSpeech FINAL)
    Q_PROPERTY(QString glosses MEMBER glosses FINAL)

  public:
    bool hasPartOfSpeech = false;
    QString partOfSpeech;
    QString glosses;  ///< Every gloss, joined with "; ".

    bool operator==(const DefinitionItem&) const = default;
};

}  // namespace velmora
