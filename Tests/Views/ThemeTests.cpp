// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/Theme.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QRawFont>
#include <cmath>
#include <memory>

#include "Tests/Views/FakeAppearance.h"
#include "Tests/Views/FakeCompositor.h"
#include "Velmora/Presentation/HeadwordCharacter.h"

namespace velmora::test {

namespace {

using ColorScheme = DesktopAppearance::ColorScheme;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// The ratio of the Web Content Accessibility Guidelines: (lighter + 0.05) / (darker + 0.05).
double contrast(const QColor& a, const QColor& b) {
    const double first = luminance(a);
    const double second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QColor over(const QColor& top, const QColor& bottom) {
    const auto mix = [&](float above, float below) {
        return above * top.alphaF() + below * (1 - top.alphaF());
    };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

class ThemeTest : public testing::Test {
  protected:
    FakeAppearance appearance;
    FakeCompositor compositor;
    std::unique_ptr<Theme> theme = std::make_unique<Theme>(appearance, compositor);
};

TEST_F(ThemeTest, ColorsStandOutFromTheCardWhateverLiesBelowIt) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        appearance.set(scheme);
        for (const bool compositing : {false, true}) {
            compositor.set(compositing);
            for (const QColor below : {Qt::white, Qt::black}) {
                const QColor card = over(theme->material(), below);
                for (const int tone : {0, 1, 2, 3, 4}) {
                    EXPECT_GE(contrast(theme->toneColor(tone), card), 3) << tone;
                }
                EXPECT_GE(contrast(theme->label(), card), 7);
                EXPECT_GE(contrast(theme->secondaryLabel(), card), 4.5);
                QColor badge = theme->blue();
                badge.setAlphaF(0.12F);
                EXPECT_GE(contrast(theme->blue(), over(badge, card)), 4);
            }
        }
    }
}

TEST_F(ThemeTest, TonesHaveTheirColors) {
    EXPECT_EQ(theme->toneColor(0), theme->secondaryLabel());
    EXPECT_EQ(theme->toneColor(1), theme->red());
    EXPECT_EQ(theme->toneColor(2), theme->orange());
    EXPECT_EQ(theme->toneColor(3), theme->green());
    EXPECT_EQ(theme->toneColor(4), theme->blue());
    EXPECT_EQ(theme->toneColor(HeadwordCharacter::noTone), theme->label());
    const QVariantList colors = theme->toneColors();
    ASSERT_EQ(colors.size(), 6);
    for (int tone = -1; tone <= 4; ++tone) {
        EXPECT_EQ(colors[tone + 1].value<QColor>(), theme->toneColor(tone));
    }
}

TEST_F(ThemeTest, FollowsTheDesktopWhileRunning) {
    int changes = 0;
    QObject::connect(theme.get(), &Theme::changed, [&changes] { ++changes; });
    EXPECT_FALSE(theme->isDark());
    appearance.set(ColorScheme::dark);
    EXPECT_TRUE(theme->isDark());
    EXPECT_EQ(changes, 1);
    appearance.set(ColorScheme::dark);
    EXPECT_EQ(changes, 1);
    compositor.set(false);
    EXPECT_FALSE(theme->isCompositing());
    EXPECT_EQ(theme->material().alpha(), 255);
    EXPECT_EQ(theme->materialStroke(), theme->separator());
    EXPECT_EQ(changes, 2);
}

TEST_F(ThemeTest, PaletteDecidesWhereTheDesktopStatesNothing) {
    appearance.set(std::nullopt);
    EXPECT_FALSE(theme->isDark());
    const QPalette before = QGuiApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
    dark.setColor(QPalette::Highlight, QColor(0xe0, 0x50, 0x10));
    QGuiApplication::setPalette(dark);
    QCoreApplication::processEvents();
    EXPECT_TRUE(theme->isDark());
    EXPECT_EQ(theme->accent(), QColor(0xe0, 0x50, 0x10));
    appearance.set(ColorScheme::light);
    EXPECT_FALSE(theme->isDark());
    QGuiApplication::setPalette(before);
    QCoreApplication::processEvents();
}

TEST_F(ThemeTest, StrokeIsThirtyFivePercentOfTheSeparatorUnderACompositor) {
    EXPECT_NEAR(theme->materialStroke().alphaF(), theme->separator().alphaF() * 0.35, 0.003);
}

TEST_F(ThemeTest, LeavesNothingBehind) {
    theme.reset();
    EXPECT_FALSE(appearance.isObserved());
    EXPECT_FALSE(compositor.isObserved());
}

TEST_F(ThemeTest, FontsKeepFractionsOfPoints) {
    EXPECT_NEAR(theme->font(22.5).pointSizeF() * 96 / 72, 22.5, 1e-9);
    EXPECT_NEAR(theme->font(10.5, QFont::DemiBold).pointSizeF() * 96 / 72, 10.5, 1e-9);
    EXPECT_EQ(theme->font(10.5, QFont::DemiBold).weight(), QFont::DemiBold);
}

TEST_F(ThemeTest, FirstFontWritesPinyinAndTheNextHanzi) {
    const QStringList families = theme->font(14).families();
    ASSERT_GE(families.size(), 2);
    const QRawFont latin = QRawFont::fromFont(QFont(families[0]));
    for (const QChar letter : QStringLiteral("āáǎàēéěèīíǐìōóǒòūúǔùüǖǘǚǜ")) {
        EXPECT_TRUE(latin.supportsCharacter(letter));
    }
    EXPECT_TRUE(QRawFont::fromFont(QFont(families[1])).supportsCharacter(QChar(0x5b66)));
    EXPECT_EQ(families[1], QStringLiteral("Noto Sans CJK SC"));
    EXPECT_EQ(theme->font(14, QFont::Normal, true).families()[1],
              QStringLiteral("Noto Sans CJK TC"));
}

TEST_F(ThemeTest, NamedStylesAreOrderedBySize) {
    using Style = Theme::TextStyle;
    EXPECT_GT(Theme::size(Style::large), Theme::size(Style::title2));
    EXPECT_GT(Theme::size(Style::title2), Theme::size(Style::title3));
    EXPECT_GT(Theme::size(Style::title3), Theme::size(Style::headline));
    EXPECT_GT(Theme::size(Style::headline), Theme::size(Style::subheadline));
    EXPECT_GT(Theme::size(Style::subheadline), Theme::size(Style::caption));
    EXPECT_GT(Theme::size(Style::caption), Theme::size(Style::caption2));
    EXPECT_EQ(theme->headline().weight(), QFont::DemiBold);
}

TEST_F(ThemeTest, LinesAreAsHighAsTheirSizeSays) {
    EXPECT_EQ(theme->lineHeight(theme->font(14)), 17);
    EXPECT_EQ(theme->lineHeight(theme->font(30)), 36);
    EXPECT_EQ(theme->lineHeight(theme->font(15)), 18);
    EXPECT_EQ(theme->lineHeight(theme->font(22.5)), 27);
}

}  // namespace

}  // namespace velmora::test
