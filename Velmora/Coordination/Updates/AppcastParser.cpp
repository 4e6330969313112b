// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/Updates/AppcastParser.h"

#include <QRegularExpression>
#include <QUrl>
#include <QXmlStreamReader>

namespace velmora {
namespace {

constexpr std::size_t mostFeedBytes = std::size_t{1} << 20;
constexpr std::size_t mostItems = 500;
constexpr qsizetype mostNoteCharacters = 20'000;
constexpr qsizetype mostMarkupCharacters = 200'000;

/// The feed's extension elements are known by their local names, whatever prefix is bound to them.
struct ItemReader {
    QXmlStreamReader& xml;
    AppcastItem item;

    void read() {
        while (xml.readNextStartElement()) {
            const auto name = xml.name();
            if (name == u"enclosure") {
                readEnclosure();
            } else if (name == u"version") {
                item.version = text();
            } else if (name == u"shortVersionString") {
                item.shortVersion = text();
            } else if (name == u"description") {
                item.releaseNotes = AppcastParser::plainText(text());
            } else {
                xml.skipCurrentElement();
            }
        }
    }

    std::string text() {
        return xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed().toStdString();
    }

    void readEnclosure() {
        // Versions may stand on the enclosure instead of in elements of their own.
        for (const auto& attribute : xml.attributes()) {
            const std::string value = attribute.value().trimmed().toString().toStdString();
            const auto name = attribute.name();
            if (name == u"url") {
                item.enclosureUrl = value;
            } else if (name == u"length") {
                item.length = attribute.value().trimmed().toLongLong();
            } else if (name == u"edSignature") {
                item.edSignature = value;
            } else if (name == u"version" && item.version.empty()) {
                item.version = value;
            } else if (name == u"shortVersionString" && item.shortVersion.empty()) {
                item.shortVersion = value;
            }
        }
        xml.skipCurrentElement();
    }

    bool isComplete() const {
        const QUrl url(QString::fromStdString(item.enclosureUrl), QUrl::StrictMode);
        return !item.version.empty() && url.isValid() && url.scheme() == u"https" &&
               !url.host().isEmpty() && item.length > 0 && !item.edSignature.empty();
    }
};

}  // namespace

std::optional<std::vector<AppcastItem>> AppcastParser::parse(const std::string& xml) {
    if (xml.size() > mostFeedBytes) {
        return std::nullopt;
    }
    QXmlStreamReader reader(QByteArray::fromStdString(xml));
    if (!reader.readNextStartElement() || reader.name() != u"rss") {
        return std::nullopt;
    }
    std::vector<AppcastItem> items;
    std::size_t seen = 0;
    while (reader.readNextStartElement()) {
        if (reader.name() != u"channel") {
            reader.skipCurrentElement();
            continue;
        }
        while (reader.readNextStartElement()) {
            if (reader.name() != u"item") {
                reader.skipCurrentElement();
                continue;
            }
            if (++seen > mostItems) {
                return std::nullopt;
            }
            ItemReader item{reader, {}};
            item.read();
            if (item.isComplete()) {
                items.push_back(std::move(item.item));
            }
        }
    }
    if (reader.hasError()) {
        return std::nullopt;
    }
    return items;
}

std::string AppcastParser::plainText(const std::string& notes) {
    static const QRegularExpression hidden(
        QStringLiteral("<(script|style)\\b[^>]*>.*?</\\1\\s*>|<!--.*?-->"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression bullets(QStringLiteral("<li\\b[^>]*>"),
                                            QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression blocks(
        QStringLiteral("<(br|/p|/div|/h[1-6]|/li|/ul|/ol|/tr)\\b[^>]*>"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression markup(QStringLiteral("</?[a-zA-Z][^>]*>"));
    static const QRegularExpression blankLines(QStringLiteral("[ \\t]*\\n([ \\t]*\\n)+"));

    QString text = QString::fromStdString(notes).left(mostMarkupCharacters);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.remove(hidden);
    text.replace(bullets, QStringLiteral("\n• "));
    text.replace(blocks, QStringLiteral("\n"));
    text.remove(markup);
    const std::pair<QLatin1String, QLatin1String> entities[] = {
        {QLatin1String("&lt;"), QLatin1String("<")},
        {QLatin1String("&gt;"), QLatin1String(">")},
        {QLatin1String("&quot;"), QLatin1String("\"")},
        {QLatin1String("&#39;"), QLatin1String("'")},
        {QLatin1String("&nbsp;"), QLatin1String(" ")},
        {QLatin1String("&amp;"), QLatin1String("&")}};
    for (const auto& [entity, character] : entities) {
        text.replace(entity, character);
    }
    text.replace(blankLines, QStringLiteral("\n"));
    return text.trimmed().left(mostNoteCharacters).toStdString();
}

}  // namespace velmora
