// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <memory>

#include "VelmoraCore/LookupResult.h"

namespace velmora {

/// What the views read of one lookup. Shares the result, which nothing changes, and converts on
/// reading.
class LookupItem {
    Q_GADGET
    QML_VALUE_TYPE(lookupItem)
    Q_PROPERTY(QString simplified READ simplified FINAL)
    Q_PROPERTY(QString pinyinMarked READ pinyinMarked FINAL)
    Q_PROPERTY(bool traditional READ traditional FINAL)
    Q_PROPERTY(QString hskBadge READ hskBadge FINAL)
    Q_PROPERTY(QVariantList headword READ headword FINAL)
    Q_PROPERTY(QVariantList definitions READ definitions FINAL)
    Q_PROPERTY(QVariantList breakdown READ breakdown FINAL)
    Q_PROPERTY(QString firstGlosses READ firstGlosses FINAL)
    Q_PROPERTY(bool hasExample READ hasExample FINAL)
    Q_PROPERTY(QString exampleHanzi READ exampleHanzi FINAL)
    Q_PROPERTY(QString examplePinyin READ examplePinyin FINAL)
    Q_PROPERTY(QString exampleEnglish READ exampleEnglish FINAL)

  public:
    /// Every reader answers empty.
    LookupItem();
    explicit LookupItem(std::shared_ptr<const LookupResult> result);

    QString simplified() const;
    QString pinyinMarked() const;

    /// The matched text is the entry's traditional headword and not its simplified one.
    bool traditional() const;

    /// "HSK 3"; empty where the level is unknown.
    QString hskBadge() const;

    /// The matched text as `HeadwordCharacter`s.
    QVariantList headword() const;

    /// One `DefinitionItem` for each definition.
    QVariantList definitions() const;

    /// One `BreakdownItem` for each character; none unless there are two or more.
    QVariantList breakdown() const;

    /// The first three glosses of all definitions, joined with "; ".
    QString firstGlosses() const;

    /// The first example; the three texts are empty where there is none.
    bool hasExample() const;
    QString exampleHanzi() const;
    QString examplePinyin() const;
    QString exampleEnglish() const;

    bool operator==(const LookupItem& other) const { return result_ == other.result_; }

  private:
    std::shared_ptr<const LookupResult> result_;
};

}  // namespace velmora
