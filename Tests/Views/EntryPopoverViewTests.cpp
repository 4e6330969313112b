// SPDX-License-Identifier: MIT
#include <QFont>
#include <string>

#include "Tests/Views/SampleEntries.h"
#include "Tests/Views/ViewTest.h"

namespace velmora::test {

namespace {

class EntryPopoverViewTest : public ViewTest {
  protected:
    double fontSize(const QString& name) {
        return item(name).property("font").value<QFont>().pointSizeF() * 96 / 72;
    }
    int weight(const QString& name) { return item(name).property("font").value<QFont>().weight(); }
    QString text(QQuickItem& label) { return label.property("text").toString(); }
    QString text(const QString& name) { return text(item(name)); }
    bool isVisible(const QString& name) { return item(name).isVisible(); }
};

TEST_F(EntryPopoverViewTest, SectionsStandFourteenApartInsideEighteen) {
    showEntry(samples::study());
    const QRectF header = frame("header");
    const QRectF divider = frame("divider");
    const QRectF definitions = frame("definitions");
    const QRectF breakdown = frame("breakdown");
    const QRectF example = frame("example");
    EXPECT_EQ(header.topLeft(), QPointF(18, 18));
    EXPECT_EQ(header.width(), 360 - 2 * 18);
    EXPECT_EQ(divider, QRectF(18, header.bottom() + 14, 324, 1));
    EXPECT_EQ(definitions.topLeft(), QPointF(18, divider.bottom() + 14));
    EXPECT_EQ(breakdown.top(), definitions.bottom() + 14);
    EXPECT_EQ(example.top(), breakdown.bottom() + 14);
    EXPECT_EQ(view().implicitHeight(), example.bottom() + 18);
    EXPECT_EQ(view().implicitWidth(), 360);
    EXPECT_EQ(panel().size(), QSize(360, static_cast<int>(view().implicitHeight())));
}

TEST_F(EntryPopoverViewTest, HeaderStandsOnOneBaseline) {
    showEntry(samples::study());
    EXPECT_EQ(baseline("headword"), baseline("pinyin"));
    EXPECT_NEAR(baseline("headword"), baseline("speaker"), 0.01);
    EXPECT_EQ(baseline("headword"), baseline("badge"));
    EXPECT_EQ(frame("pinyin").left(), frame("headword").right() + 10);
    EXPECT_EQ(frame("badge").right(), 360 - 18);
    EXPECT_EQ(frame("speaker").right(), frame("badge").left() - 10);
}

TEST_F(EntryPopoverViewTest, HeaderTexts) {
    showEntry(samples::studyTraditional());
    EXPECT_EQ(text("pinyin"), QStringLiteral("xué xí"));
    EXPECT_EQ(text("badge"), QStringLiteral("HSK 1"));
    EXPECT_EQ(fontSize("pinyin"), 18);
    EXPECT_EQ(weight("pinyin"), QFont::Medium);
    EXPECT_EQ(weight("badge"), QFont::DemiBold);
    EXPECT_EQ(item("headword").property("fontSize").toDouble(), 30);
}

TEST_F(EntryPopoverViewTest, BadgeIsPaddedSevenAndThree) {
    showEntry(samples::study());
    QQuickItem* label = item("badge").childItems().front();
    EXPECT_EQ(label->position(), QPointF(7, 3));
    EXPECT_EQ(item("badge").width(), label->width() + 14);
    EXPECT_EQ(item("badge").height(), label->height() + 6);
    EXPECT_EQ(item("badge").property("radius").toDouble(), item("badge").height() / 2);
}

TEST_F(EntryPopoverViewTest, WithoutALevelTheSpeakerStandsLast) {
    showEntry(samples::water());
    EXPECT_FALSE(isVisible("badge"));
    EXPECT_EQ(frame("speaker").right(), 360 - 18);
}

TEST_F(EntryPopoverViewTest, DefinitionsStandEightApart) {
    showEntry(samples::study());
    const auto glosses = items(item("definitions"), "glosses");
    const auto parts = items(item("definitions"), "partOfSpeech");
    ASSERT_EQ(glosses.size(), 2);
    EXPECT_EQ(text(*glosses[0]), QStringLiteral("to study; to learn"));
    EXPECT_EQ(text(*parts[0]), QStringLiteral("v."));
    EXPECT_EQ(frame(*parts[0]).left(), 18);
    EXPECT_EQ(frame(*parts[0]).width(), 32);
    EXPECT_EQ(frame(*glosses[0]).left(), 18 + 32 + 8);
    EXPECT_EQ(frame(*glosses[0]).top(), frame(*parts[0]).top());
    EXPECT_EQ(frame(*glosses[1]).top(), frame(*glosses[0]).bottom() + 8);
}

TEST_F(EntryPopoverViewTest, WithoutAPartOfSpeechGlossesStartAtTheEdge) {
    showEntry(samples::water());
    const auto glosses = items(item("definitions"), "glosses");
    ASSERT_EQ(glosses.size(), 1);
    EXPECT_EQ(frame(*glosses[0]).left(), 18);
    EXPECT_FALSE(items(item("definitions"), "partOfSpeech").front()->isVisible());
}

TEST_F(EntryPopoverViewTest, LongGlossesWrap) {
    showEntry(samples::manySenses());
    const auto glosses = items(item("definitions"), "glosses");
    ASSERT_EQ(glosses.size(), 12);
    EXPECT_EQ(glosses[0]->property("lineCount").toInt(), 2);
    EXPECT_EQ(glosses[0]->height(), 2 * 17);
    EXPECT_FALSE(glosses[0]->property("truncated").toBool());
}

TEST_F(EntryPopoverViewTest, BreakdownNeedsTwoCharacters) {
    LookupResult result = samples::study();
    result.characterBreakdown.resize(1);
    showEntry(result);
    EXPECT_FALSE(isVisible("breakdown"));
    EXPECT_EQ(frame("example").top(), frame("definitions").bottom() + 14);
    result.characterBreakdown.clear();
    showEntry(result);
    EXPECT_FALSE(isVisible("breakdown"));
}

TEST_F(EntryPopoverViewTest, BreakdownRows) {
    showEntry(samples::study());
    QQuickItem& breakdown = item("breakdown");
    EXPECT_EQ(text("breakdownTitle"), QStringLiteral("Character Breakdown"));
    EXPECT_EQ(weight("breakdownTitle"), QFont::DemiBold);
    EXPECT_EQ(frame("breakdownTitle").top(), frame("breakdown").top() + 2);
    const auto hanzi = items(breakdown, "hanzi");
    const auto pinyin = items(breakdown, "pinyin");
    const auto glosses = items(breakdown, "glosses");
    ASSERT_EQ(hanzi.size(), 2);
    EXPECT_EQ(text(*hanzi[0]), QStringLiteral("学"));
    EXPECT_EQ(text(*pinyin[0]), QStringLiteral("xué"));
    // The first two glosses of three.
    EXPECT_EQ(text(*glosses[0]), QStringLiteral("to learn; to study"));
    EXPECT_EQ(frame(*hanzi[0]->parentItem()).top(), frame("breakdownTitle").bottom() + 7);
    EXPECT_EQ(frame(*hanzi[1]->parentItem()).top(), frame(*hanzi[0]->parentItem()).bottom() + 7);
    EXPECT_EQ(frame(*pinyin[0]).left(), frame(*hanzi[0]).right() + 8);
    EXPECT_EQ(frame(*pinyin[0]).width(), 54);
    EXPECT_EQ(frame(*glosses[0]).left(), frame(*pinyin[0]).right() + 8);
    EXPECT_EQ(baseline(*hanzi[0]), baseline(*pinyin[0]));
    EXPECT_EQ(baseline(*hanzi[0]), baseline(*glosses[0]));
}

TEST_F(EntryPopoverViewTest, BreakdownGlossesStayOnOneLine) {
    showEntry(samples::longIdiom());
    const auto glosses = items(item("breakdown"), "glosses");
    ASSERT_EQ(glosses.size(), 6);
    EXPECT_TRUE(glosses[3]->property("truncated").toBool());
    EXPECT_EQ(glosses[3]->property("lineCount").toInt(), 1);
    EXPECT_EQ(text(*glosses[5]), QString());
}

TEST_F(EntryPopoverViewTest, ExampleStandsLast) {
    showEntry(samples::study());
    EXPECT_EQ(text("exampleTitle"), QStringLiteral("Example"));
    EXPECT_EQ(frame("exampleHeader").top(), frame("example").top() + 2);
    EXPECT_EQ(frame("exampleSpeaker").right(), 360 - 18);
    // Centred on whole points.
    EXPECT_NEAR(frame("exampleSpeaker").center().y(), frame("exampleHeader").center().y(), 0.5);
    EXPECT_EQ(frame("exampleHanzi").top(), frame("exampleHeader").bottom() + 6);
    EXPECT_EQ(frame("examplePinyin").top(), frame("exampleHanzi").bottom() + 6);
    EXPECT_EQ(frame("exampleEnglish").top(), frame("examplePinyin").bottom() + 6);
    EXPECT_EQ(fontSize("exampleHanzi"), 16);
    EXPECT_EQ(weight("exampleHanzi"), QFont::Medium);
    EXPECT_EQ(fontSize("examplePinyin"), 14);
    EXPECT_EQ(item("examplePinyin").property("color").value<QColor>(), theme.secondaryLabel());
}

TEST_F(EntryPopoverViewTest, OnlyTheFirstExampleIsShown) {
    LookupResult result = samples::study();
    ExampleSentence another;
    another.hanzi = "她会说中文。";
    result.entry.examples.push_back(another);
    showEntry(result);
    EXPECT_EQ(text("exampleHanzi"), QStringLiteral("我每天学习中文。"));
    EXPECT_EQ(items(view(), "exampleHanzi").size(), 1);
}

TEST_F(EntryPopoverViewTest, WithoutAnExampleTheCardEndsBefore) {
    LookupResult result = samples::study();
    result.entry.examples.clear();
    showEntry(result);
    EXPECT_FALSE(isVisible("example"));
    EXPECT_EQ(view().implicitHeight(), frame("breakdown").bottom() + 18);
    result.characterBreakdown.clear();
    showEntry(result);
    EXPECT_EQ(view().implicitHeight(), frame("definitions").bottom() + 18);
}

TEST_F(EntryPopoverViewTest, ScaleMultipliesFourSizesOnly) {
    for (const double scale : {0.7, 1.0, 1.5}) {
        showEntry(samples::study(), scale);
        EXPECT_NEAR(item("headword").property("fontSize").toDouble(), 30 * scale, 1e-9);
        EXPECT_NEAR(fontSize("pinyin"), 18 * scale, 1e-9);
        EXPECT_NEAR(fontSize("exampleHanzi"), 16 * scale, 1e-9);
        EXPECT_NEAR(fontSize("examplePinyin"), 14 * scale, 1e-9);
        EXPECT_NEAR(fontSize("exampleEnglish"), 14 * scale, 1e-9);
        EXPECT_NEAR(fontSize("breakdownTitle"), Theme::size(Theme::TextStyle::headline), 1e-9);
        EXPECT_NEAR(fontSize("exampleTitle"), Theme::size(Theme::TextStyle::headline), 1e-9);
        EXPECT_NEAR(fontSize("hanzi"), Theme::size(Theme::TextStyle::title3), 1e-9);
        EXPECT_NEAR(fontSize("badge"), Theme::size(Theme::TextStyle::caption), 1e-9);
        EXPECT_EQ(frame("header").topLeft(), QPointF(18, 18));
        EXPECT_EQ(frame("divider").top(), frame("header").bottom() + 14);
        EXPECT_EQ(panel().width(), 360);
    }
}

TEST_F(EntryPopoverViewTest, SpeakersSayTheSimplifiedFormAndTheExample) {
    showEntry(samples::studyTraditional());
    click(item("speaker"));
    click(item("exampleSpeaker"));
    EXPECT_EQ(speaker.spoken, (std::vector<std::string>{"学习", "我每天学习中文。"}));
}

TEST_F(EntryPopoverViewTest, ButtonsHaveSymbolsAndHelp) {
    showEntry(samples::study());
    EXPECT_EQ(item("speaker").property("symbol").toString(), QStringLiteral("speaker.wave.2.fill"));
    EXPECT_EQ(item("speaker").property("help").toString(), QStringLiteral("Pronounce"));
    EXPECT_EQ(item("exampleSpeaker").property("symbol").toString(),
              QStringLiteral("speaker.wave.1.fill"));
    EXPECT_EQ(item("exampleSpeaker").property("help").toString(),
              QStringLiteral("Pronounce example"));
}

TEST_F(EntryPopoverViewTest, LongHeadwordAndReadingKeepClearOfTheSpeaker) {
    for (const double scale : {0.7, 1.0, 1.5}) {
        showEntry(samples::longIdiom(), scale);
        EXPECT_LE(frame("headword").right() + 10, frame("pinyin").left() + 0.01);
        EXPECT_LE(frame("pinyin").right() + 20, frame("speaker").left() + 0.01);
        EXPECT_GT(item("pinyin").property("lineCount").toInt(), 1);
    }
}

TEST_F(EntryPopoverViewTest, MarkupInTheDictionaryIsText) {
    LookupResult result = samples::water();
    result.entry.definitions.front().glosses = {"<b>water</b> <img src='file:///etc/hosts'/>"};
    showEntry(result);
    EXPECT_EQ(text(*items(item("definitions"), "glosses").front()),
              QStringLiteral("<b>water</b> <img src='file:///etc/hosts'/>"));
    EXPECT_EQ(items(item("definitions"), "glosses").front()->property("lineCount").toInt(), 1);
}

}  // namespace

}  // namespace velmora::test
