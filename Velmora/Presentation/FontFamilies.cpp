// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/FontFamilies.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QRawFont>

namespace velmora {

namespace {

bool canWritePinyin(const QString& family) {
    static const QString marked = QStringLiteral("āáǎàēéěèīíǐìōóǒòūúǔùüǖǘǚǜ");
    const QRawFont font = QRawFont::fromFont(QFont(family));
    for (const QChar letter : marked) {
        if (!font.supportsCharacter(letter)) {
            return false;
        }
    }
    return true;
}

/// Marks that fall back to another family stand out badly within a word, so that a desktop family
/// without them gives way as a whole.
QString latinFamily() {
    QString desktop = QFontInfo(QGuiApplication::font()).family();
    for (const QString& family :
         {desktop, QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans"),
          QStringLiteral("Liberation Sans")}) {
        if (QFontDatabase::hasFamily(family) && canWritePinyin(family)) {
            return family;
        }
    }
    return desktop;
}

QStringList hanziFamilies(const QStringList& preferred, QFontDatabase::WritingSystem system) {
    QStringList found;
    for (const QString& family : preferred) {
        if (QFontDatabase::hasFamily(family)) {
            found.append(family);
        }
    }
    if (found.isEmpty()) {
        found = QFontDatabase::families(system).mid(0, 1);
    }
    return found;
}

}  // namespace

FontFamilies FontFamilies::installed() {
    const QString latin = latinFamily();
    const QStringList mainland =
        hanziFamilies({QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Noto Sans SC"),
                       QStringLiteral("Source Han Sans SC"), QStringLiteral("Source Han Sans CN"),
                       QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("WenQuanYi Zen Hei")},
                      QFontDatabase::SimplifiedChinese);
    const QStringList traditionalForms =
        hanziFamilies({QStringLiteral("Noto Sans CJK TC"), QStringLiteral("Noto Sans TC"),
                       QStringLiteral("Source Han Sans TC"), QStringLiteral("Source Han Sans TW"),
                       QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("WenQuanYi Zen Hei")},
                      QFontDatabase::TraditionalChinese);
    return {QStringList{latin} + mainland, QStringList{latin} + traditionalForms + mainland};
}

}  // namespace velmora
