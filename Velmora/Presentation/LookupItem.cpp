// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/LookupItem.h"

#include <algorithm>

#include "Velmora/Presentation/BreakdownItem.h"
#include "Velmora/Presentation/DefinitionItem.h"
#include "Velmora/Presentation/HeadwordCharacter.h"

namespace velmora {

namespace {

constexpr std::size_t breakdownGlosses = 2;
constexpr std::size_t selectionGlosses = 3;

/// The first `limit` glosses, joined.
QString joined(const std::vector<std::string>& glosses, std::size_t limit) {
    QString text;
    for (std::size_t i = 0; i < std::min(limit, glosses.size()); ++i) {
        if (i > 0) {
            text += QStringLiteral("; ");
        }
        text += QString::fromStdString(glosses[i]);
    }
    return text;
}

const std::shared_ptr<const LookupResult>& noResult() {
    static const auto result = std::make_shared<const LookupResult>();
    return result;
}

}  // namespace

LookupItem::LookupItem() : result_(noResult()) {}

LookupItem::LookupItem(std::shared_ptr<const LookupResult> result) : result_(std::move(result)) {}

QString LookupItem::simplified() const {
    return QString::fromStdString(result_->entry.simplified);
}

QString LookupItem::pinyinMarked() const {
    return QString::fromStdString(result_->entry.pinyinMarked);
}

bool LookupItem::traditional() const {
    return result_->matchedText == result_->entry.traditional &&
           result_->matchedText != result_->entry.simplified;
}

QString LookupItem::hskBadge() const {
    const auto level = result_->entry.hskLevel;
    return level ? QStringLiteral("HSK %1").arg(*level) : QString();
}

QVariantList LookupItem::headword() const {
    QVariantList list;
    for (const HeadwordCharacter& character :
         HeadwordCharacter::pair(result_->entry, result_->matchedText)) {
        list.append(QVariant::fromValue(character));
    }
    return list;
}

QVariantList LookupItem::definitions() const {
    QVariantList list;
    for (const EntryDefinition& definition : result_->entry.definitions) {
        list.append(QVariant::fromValue(
            DefinitionItem{definition.partOfSpeech.has_value(),
                           QString::fromStdString(definition.partOfSpeech.value_or(std::string())),
                           joined(definition.glosses, definition.glosses.size())}));
    }
    return list;
}

QVariantList LookupItem::breakdown() const {
    QVariantList list;
    if (result_->characterBreakdown.size() < 2) {
        return list;
    }
    for (const DictionaryEntry& entry : result_->characterBreakdown) {
        list.append(QVariant::fromValue(BreakdownItem{
            QString::fromStdString(entry.simplified), QString::fromStdString(entry.pinyinMarked),
            entry.definitions.empty()
                ? QString()
                : joined(entry.definitions.front().glosses, breakdownGlosses)}));
    }
    return list;
}

QString LookupItem::firstGlosses() const {
    std::vector<std::string> glosses;
    for (const EntryDefinition& definition : result_->entry.definitions) {
        for (const std::string& gloss : definition.glosses) {
            if (glosses.size() == selectionGlosses) {
                return joined(glosses, selectionGlosses);
            }
            glosses.push_back(gloss);
        }
    }
    return joined(glosses, selectionGlosses);
}

bool LookupItem::hasExample() const {
    return !result_->entry.examples.empty();
}

QString LookupItem::exampleHanzi() const {
    return hasExample() ? QString::fromStdString(result_->entry.examples.front().hanzi) : QString();
}

QString LookupItem::examplePinyin() const {
    return hasExample() ? QString::fromStdString(result_->entry.examples.front().pinyin)
                        : QString();
}

QString LookupItem::exampleEnglish() const {
    return hasExample() ? QString::fromStdString(result_->entry.examples.front().english)
                        : QString();
}

}  // namespace velmora
