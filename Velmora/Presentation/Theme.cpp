// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/Theme.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <QQmlEngine>
#include <QScreen>
#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <utility>

#include "Velmora/Presentation/HeadwordCharacter.h"
#include "VelmoraCore/PinyinTone.h"

namespace velmora {

namespace {

constexpr const char* engineProperty = "velmoraTheme";

/// Fractions of the separator's own strength.
constexpr double strokeOpacity = 0.35;

constexpr double lineHeightPerEm = 1.2;
constexpr double capHeightPerEm = 0.714;

/// Fonts are told their size in 72nds of an inch, which Qt turns into points (logical pixels) by
/// the resolution of the primary screen.
double pointsPerTypographicPoint() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return (screen ? std::round(screen->logicalDotsPerInchY()) : 96) / 72;
}

bool paletteIsDark() {
    return QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

}  // namespace

Theme::Theme(DesktopAppearance& appearance, Compositor& compositor)
    : appearance_(appearance), compositor_(compositor), families_(FontFamilies::installed()) {
    appearance_.observe([this](auto) { update(); });
    compositor_.observe([this](bool) { update(); });
    QGuiApplication::instance()->installEventFilter(this);
    update();
}

Theme::~Theme() {
    appearance_.observe({});
    compositor_.observe({});
}

Theme* Theme::create(QQmlEngine* engine, QJSEngine*) {
    auto* theme = engine->property(engineProperty).value<Theme*>();
    QJSEngine::setObjectOwnership(theme, QJSEngine::CppOwnership);
    return theme;
}

void Theme::attach(QQmlEngine& engine) {
    engine.setProperty(engineProperty, QVariant::fromValue(this));
}

void Theme::whenAnswered(QObject& owner, std::function<void()> step) const {
    compositor_.whenAnswered([guard = QPointer<QObject>(&owner), step = std::move(step)] {
        if (guard) {
            step();
        }
    });
}

QColor Theme::accent() const {
    return QGuiApplication::palette().color(QPalette::Highlight);
}

QColor Theme::material() const {
    return compositing_ ? colors().material : colors().opaqueMaterial;
}

QColor Theme::materialStroke() const {
    QColor color = colors().separator;
    if (compositing_) {
        color.setAlphaF(static_cast<float>(color.alphaF() * strokeOpacity));
    }
    return color;
}

QColor Theme::toneColor(int tone) const {
    switch (tone) {
        case static_cast<int>(PinyinTone::neutral):
            return colors().secondaryLabel;
        case static_cast<int>(PinyinTone::first):
            return colors().red;
        case static_cast<int>(PinyinTone::second):
            return colors().orange;
        case static_cast<int>(PinyinTone::third):
            return colors().green;
        case static_cast<int>(PinyinTone::fourth):
            return colors().blue;
        default:
            return colors().label;
    }
}

QVariantList Theme::toneColors() const {
    QVariantList list{toneColor(HeadwordCharacter::noTone)};
    for (const PinyinTone tone : allPinyinTones) {
        list.append(toneColor(static_cast<int>(tone)));
    }
    return list;
}

QFont Theme::font(double size, int weight, bool traditional) const {
    QFont font;
    font.setFamilies(traditional ? families_.traditional : families_.simplified);
    // Pixel sizes are whole numbers, point sizes are not: 15 at a scale of 0.7 must stay 10.5.
    font.setPointSizeF(size / pointsPerTypographicPoint());
    font.setWeight(static_cast<QFont::Weight>(weight));
    return font;
}

QFont Theme::large(int weight) const {
    return font(size(TextStyle::large), weight);
}

QFont Theme::title2(int weight) const {
    return font(size(TextStyle::title2), weight);
}

QFont Theme::title3(int weight) const {
    return font(size(TextStyle::title3), weight);
}

QFont Theme::headline() const {
    return font(size(TextStyle::headline), QFont::DemiBold);
}

QFont Theme::body() const {
    return font(size(TextStyle::body));
}

QFont Theme::subheadline(int weight) const {
    return font(size(TextStyle::subheadline), weight);
}

QFont Theme::caption(int weight) const {
    return font(size(TextStyle::caption), weight);
}

QFont Theme::caption2(int weight) const {
    return font(size(TextStyle::caption2), weight);
}

double Theme::lineHeight(const QFont& font) const {
    return std::ceil(font.pointSizeF() * pointsPerTypographicPoint() * lineHeightPerEm - 0.01);
}

double Theme::lineBaseline(const QFont& font) const {
    const double capHeight = font.pointSizeF() * pointsPerTypographicPoint() * capHeightPerEm;
    return std::round((lineHeight(font) + capHeight) / 2);
}

double Theme::digitWidth(const QFont& font) const {
    QTextOption option;
    option.setUseDesignMetrics(true);
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit) {
        QTextLayout layout(QString(QLatin1Char(digit)), font);
        layout.setTextOption(option);
        layout.beginLayout();
        const QTextLine line = layout.createLine();
        layout.endLayout();
        widest = std::max(widest, line.naturalTextWidth());
    }
    return widest;
}

double Theme::size(TextStyle style) {
    switch (style) {
        case TextStyle::large:
            return 26;
        case TextStyle::title2:
            return 18;
        case TextStyle::title3:
            return 16;
        case TextStyle::headline:
        case TextStyle::body:
            return 14;
        case TextStyle::subheadline:
            return 12;
        case TextStyle::caption:
            return 11;
        case TextStyle::caption2:
            return 10;
    }
    return 14;
}

bool Theme::eventFilter(QObject* watched, QEvent* event) {
    if (watched == QGuiApplication::instance() &&
        event->type() == QEvent::ApplicationPaletteChange) {
        update();
        emit changed();
    }
    return QObject::eventFilter(watched, event);
}

void Theme::update() {
    const auto scheme = appearance_.colorScheme();
    const bool dark = scheme ? *scheme == DesktopAppearance::ColorScheme::dark : paletteIsDark();
    const bool compositing = compositor_.isCompositing();
    if (dark == dark_ && compositing == compositing_) {
        return;
    }
    dark_ = dark;
    compositing_ = compositing;
    emit changed();
}

}  // namespace velmora
