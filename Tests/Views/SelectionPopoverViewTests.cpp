// SPDX-License-Identifier: MIT
#include <QFont>
#include <QWheelEvent>
#include <string>

#include "Tests/Views/SampleEntries.h"
#include "Tests/Views/ViewTest.h"

namespace velmora::test {

namespace {

class SelectionPopoverViewTest : public ViewTest {
  protected:
    QString text(QQuickItem& label) { return label.property("text").toString(); }
    double fontSize(QQuickItem& label) {
        return label.property("font").value<QFont>().pointSizeF() * 96 / 72;
    }
    QQuickItem& row(int index) {
        const auto headwords = items(item("list"), "headword");
        return *headwords[index]->parentItem();
    }
    QQuickItem& inRow(int index, const QString& name) { return *items(row(index), name).front(); }
};

TEST_F(SelectionPopoverViewTest, IsAlwaysFourHundredThirtySquare) {
    for (const std::size_t count : {std::size_t{1}, std::size_t{30}}) {
        for (const double scale : {0.7, 1.0, 1.5}) {
            showSelection(samples::words(count), "学习", scale);
            EXPECT_EQ(panel().size(), QSize(430, 430));
        }
    }
}

TEST_F(SelectionPopoverViewTest, HeaderDividerAndList) {
    showSelection(samples::words(30), "妈妈每天学习中文");
    EXPECT_EQ(text(item("title")), QStringLiteral("Selected Text"));
    EXPECT_EQ(frame("title").topLeft(), QPointF(18, 18));
    EXPECT_EQ(frame("selectedText").top(), frame("title").bottom() + 6);
    EXPECT_EQ(fontSize(item("selectedText")), 17);
    EXPECT_EQ(frame("divider"), QRectF(18, frame("selectedText").bottom() + 14, 394, 1));
    EXPECT_EQ(frame("list").topLeft(), QPointF(18, frame("divider").bottom() + 14));
    EXPECT_EQ(frame("list").bottomRight(), QPointF(430 - 18, 430 - 18));
}

TEST_F(SelectionPopoverViewTest, LongTextEndsAfterTwoLines) {
    std::string longText;
    for (int i = 0; i < 5000; ++i) {
        longText += "妈妈每天学习";
    }
    showSelection(samples::words(3), longText);
    EXPECT_EQ(item("selectedText").property("lineCount").toInt(), 2);
    EXPECT_TRUE(item("selectedText").property("truncated").toBool());
    EXPECT_EQ(item("selectedText").height(), 2 * 21);
}

TEST_F(SelectionPopoverViewTest, Rows) {
    showSelection(samples::words(5), "学习");
    EXPECT_EQ(frame(row(0)).topLeft(), frame("list").topLeft());
    EXPECT_EQ(frame(row(0)).width(), 394);
    EXPECT_EQ(frame(row(1)).top(), frame(row(0)).bottom() + 12);
    EXPECT_EQ(frame(inRow(0, "headword")).left(), 18);
    EXPECT_EQ(frame(inRow(0, "details")).left(), 18 + 68 + 12);
    EXPECT_EQ(inRow(0, "headword").property("fontSize").toDouble(), 24);
    EXPECT_EQ(fontSize(inRow(0, "pinyin")), 15);
    EXPECT_EQ(frame(inRow(0, "badge")).left(), frame(inRow(0, "pinyin")).right() + 8);
    EXPECT_EQ(baseline(inRow(0, "pinyin")), baseline(inRow(0, "badge")));
    EXPECT_NEAR(baseline(inRow(0, "pinyin")), baseline(inRow(0, "speaker")), 0.01);
    EXPECT_EQ(frame(inRow(0, "speaker")).right(), 430 - 18);
    EXPECT_EQ(frame(inRow(0, "rowDivider")).bottom(), frame(row(0)).bottom());
    EXPECT_EQ(frame(inRow(0, "rowDivider")).size(), QSizeF(394, 1));
    const double lowest =
        std::max(frame(inRow(0, "headword")).bottom(), frame(inRow(0, "glosses")).bottom());
    EXPECT_EQ(frame(row(0)).bottom(), lowest + 10);
}

TEST_F(SelectionPopoverViewTest, BadgeIsPaddedSixAndTwo) {
    showSelection(samples::words(1), "学习");
    QQuickItem& badge = inRow(0, "badge");
    EXPECT_EQ(text(badge), QStringLiteral("HSK 1"));
    EXPECT_EQ(badge.childItems().front()->position(), QPointF(6, 2));
    EXPECT_EQ(badge.height(), badge.childItems().front()->height() + 4);
    EXPECT_EQ(fontSize(badge), Theme::size(Theme::TextStyle::caption2));
}

TEST_F(SelectionPopoverViewTest, RowWithoutALevelHasNoBadge) {
    showSelection({samples::water()}, "水");
    EXPECT_FALSE(inRow(0, "badge").isVisible());
    EXPECT_EQ(frame(inRow(0, "speaker")).right(), 430 - 18);
}

TEST_F(SelectionPopoverViewTest, ShowsTheFirstThreeGlossesOfAllDefinitions) {
    const auto row = [](const std::vector<std::vector<std::string>>& senses) {
        return samples::simplified(samples::entry("意思", "意思", "yi4 si5", senses));
    };
    showSelection({row({{"a", "b"}, {"c", "d"}, {"e"}}), row({{"a", "b", "c"}, {"d"}}),
                   row({{"a"}}), row({})},
                  "意思");
    EXPECT_EQ(text(inRow(0, "glosses")), QStringLiteral("a; b; c"));
    EXPECT_EQ(text(inRow(1, "glosses")), QStringLiteral("a; b; c"));
    EXPECT_EQ(text(inRow(2, "glosses")), QStringLiteral("a"));
    EXPECT_EQ(text(inRow(3, "glosses")), QString());
    EXPECT_TRUE(items(view(), "example").isEmpty());
    EXPECT_TRUE(items(view(), "breakdown").isEmpty());
}

TEST_F(SelectionPopoverViewTest, GlossesStandFiveUnderThePinyin) {
    showSelection({samples::water()}, "水");
    EXPECT_EQ(frame(inRow(0, "glosses")).top(), frame(inRow(0, "pinyin")).bottom() + 5);
}

TEST_F(SelectionPopoverViewTest, TheSameWordTwiceHasTwoRows) {
    showSelection({samples::water(), samples::water()}, "水水");
    EXPECT_EQ(items(item("list"), "headword").size(), 2);
}

TEST_F(SelectionPopoverViewTest, LongHeadwordKeepsToItsColumn) {
    for (const double scale : {1.0, 1.5}) {
        showSelection(samples::words(5), "中华人民共和国", scale);
        QQuickItem& headword =
            inRow(3 < items(item("list"), "headword").size() ? 3 : 0, "headword");
        EXPECT_LE(headword.width(), 68);
        EXPECT_EQ(frame(inRow(0, "details")).left(), 18 + 68 + 12);
    }
}

TEST_F(SelectionPopoverViewTest, ScaleMultipliesTheSizesOfTheRow) {
    showSelection(samples::words(5), "学习", 1.5);
    EXPECT_EQ(inRow(0, "headword").property("fontSize").toDouble(), 36);
    EXPECT_EQ(fontSize(inRow(0, "pinyin")), 22.5);
    EXPECT_EQ(fontSize(inRow(0, "glosses")), 21);
    EXPECT_EQ(fontSize(item("selectedText")), 25.5);
    EXPECT_NEAR(fontSize(item("title")), Theme::size(Theme::TextStyle::headline), 1e-9);
}

TEST_F(SelectionPopoverViewTest, ThirtyRowsScroll) {
    showSelection(samples::words(30), "学习");
    QQuickItem& list = item("list");
    EXPECT_TRUE(item("scrollIndicator").isVisible());
    EXPECT_GT(list.property("contentHeight").toDouble(), list.height());
    const QPointF middle = list.mapToScene({100, 100});
    const auto wheel = [&](int steps) {
        QWheelEvent event(middle, middle, {}, {0, 120 * steps}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&panel(), &event);
    };
    wheel(-1);
    EXPECT_EQ(list.property("contentY").toDouble(), 60);
    wheel(5);
    EXPECT_EQ(list.property("contentY").toDouble(), 0);
    for (int i = 0; i < 100; ++i) {
        wheel(-1);
        picture();
    }
    EXPECT_NEAR(list.property("contentY").toDouble() - list.property("originY").toDouble(),
                list.property("contentHeight").toDouble() - list.height(), 1);
    // A later selection starts at its first word.
    showSelection(samples::words(30), "学习");
    EXPECT_EQ(item("list").property("contentY").toDouble(), 0);
}

TEST_F(SelectionPopoverViewTest, OneRowDoesNotScroll) {
    showSelection(samples::words(1), "学习");
    EXPECT_FALSE(item("scrollIndicator").isVisible());
}

TEST_F(SelectionPopoverViewTest, HoldsOnlyTheRowsInSight) {
    showSelection(samples::words(5000), "学习");
    EXPECT_LT(items(item("list"), "headword").size(), 40);
}

TEST_F(SelectionPopoverViewTest, SpeakersSayTheSimplifiedForm) {
    LookupResult traditional = samples::studyTraditional();
    showSelection({samples::water(), traditional}, "水學習");
    click(inRow(1, "speaker"));
    click(inRow(0, "speaker"));
    EXPECT_EQ(speaker.spoken, (std::vector<std::string>{"学习", "水"}));
    EXPECT_EQ(inRow(0, "speaker").property("help").toString(), QStringLiteral("Pronounce"));
}

}  // namespace

}  // namespace velmora::test
