// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QMetaType>
#include <QString>

namespace velmora {

/// One row of the character breakdown on the entry card.
struct BreakdownItem {
    Q_GADGET
    QML_VALUE_TYPE(breakdownItem)
    Q_PROPERTY(QString simplified MEMBER simplified FINAL)
    Q_PROPERTY(QString pinyinMarked MEMBER pinyinMarked FINAL)
    Q_PROPERTY(QString glosses MEMBER glosses FINAL)

  public:
    QString simplified;
    QString pinyinMarked;
    QString glosses;  ///< The first two of the first definition, joined with "; ".

    bool operator==(const BreakdownItem&) const = default;
};

}  // namespace velmora
