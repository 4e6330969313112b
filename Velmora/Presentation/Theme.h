// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QColor>
#include <QFont>
#include <QObject>
#include <QVariantList>
#include <functional>

#include "Velmora/Platform/Compositor.h"
#include "Velmora/Platform/DesktopAppearance.h"
#include "Velmora/Presentation/FontFamilies.h"
#include "Velmora/Presentation/ThemeColors.h"

class QJSEngine;
class QQmlEngine;

namespace velmora {

/// Colours, materials and fonts of every window. Follows the desktop's light or dark preference
/// and the compositor while the program runs. Main thread. Views reach it as the singleton `Theme`.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(bool compositing READ isCompositing NOTIFY changed)
    Q_PROPERTY(QColor label READ label NOTIFY changed)
    Q_PROPERTY(QColor secondaryLabel READ secondaryLabel NOTIFY changed)
    Q_PROPERTY(QColor separator READ separator NOTIFY changed)
    Q_PROPERTY(QColor red READ red NOTIFY changed)
    Q_PROPERTY(QColor orange READ orange NOTIFY changed)
    Q_PROPERTY(QColor green READ green NOTIFY changed)
    Q_PROPERTY(QColor blue READ blue NOTIFY changed)
    Q_PROPERTY(QVariantList toneColors READ toneColors NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor material READ material NOTIFY changed)
    Q_PROPERTY(QColor helpTag READ helpTag NOTIFY changed)
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor group READ group NOTIFY changed)
    Q_PROPERTY(QColor control READ control NOTIFY changed)
    Q_PROPERTY(QColor tint READ tint NOTIFY changed)
    Q_PROPERTY(QColor materialStroke READ materialStroke NOTIFY changed)

  public:
    /// The named text styles. Their sizes do not follow the popover's font scale.
    enum class TextStyle { large, title2, title3, headline, body, subheadline, caption, caption2 };

    /// Both outlive the theme, which observes them.
    Theme(DesktopAppearance& appearance, Compositor& compositor);
    ~Theme() override;

    /// For the QML engine: the theme that was given to it with `attach`.
    static Theme* create(QQmlEngine* engine, QJSEngine* scriptEngine);
    void attach(QQmlEngine& engine);

    bool isDark() const { return dark_; }
    bool isCompositing() const { return compositing_; }
    /// Sends what windows were told to the display at once.
    void sendChanges() const { compositor_.sendChanges(); }
    /// Calls the step when the display has answered what is asked now, unless its owner is gone by
    /// then. For whatever asks the display itself: while others keep it, that would have to wait.
    void whenAnswered(QObject& owner, std::function<void()> step) const;

    const ThemeColors& colors() const { return dark_ ? ThemeColors::dark() : ThemeColors::light(); }

    QColor label() const { return colors().label; }
    QColor secondaryLabel() const { return colors().secondaryLabel; }
    QColor separator() const { return colors().separator; }
    QColor red() const { return colors().red; }
    QColor orange() const { return colors().orange; }
    QColor green() const { return colors().green; }
    QColor blue() const { return colors().blue; }
    QColor helpTag() const { return colors().helpTag; }
    QColor window() const { return colors().window; }
    QColor group() const { return colors().group; }
    QColor control() const { return colors().control; }
    QColor tint() const { return colors().tint; }

    /// The desktop's own colour for what is selected.
    QColor accent() const;

    /// What cards and bubbles are filled with: translucent only under a compositor.
    QColor material() const;

    /// The line around a card: the separator at 35 %; the whole separator where no shadow sets the
    /// card off from what lies below.
    QColor materialStroke() const;

    /// The colour of a character with this tone (0 neutral, 1 to 4); any other number is a
    /// character without a syllable.
    QColor toneColor(int tone) const;

    /// The same for views: the colour of a tone at its number plus one, of no syllable at 0.
    QVariantList toneColors() const;

    /// A font whose em is this many points high. `traditional` prefers the forms of that script.
    Q_INVOKABLE QFont font(double size, int weight = QFont::Normal, bool traditional = false) const;

    /// The fonts of the named styles; headlines are semibold.
    Q_INVOKABLE QFont large(int weight = QFont::Normal) const;
    Q_INVOKABLE QFont title2(int weight = QFont::Normal) const;
    Q_INVOKABLE QFont title3(int weight = QFont::Normal) const;
    Q_INVOKABLE QFont headline() const;
    Q_INVOKABLE QFont body() const;
    Q_INVOKABLE QFont subheadline(int weight = QFont::Normal) const;
    Q_INVOKABLE QFont caption(int weight = QFont::Normal) const;
    Q_INVOKABLE QFont caption2(int weight = QFont::Normal) const;

    /// The height of a line in points and where its baseline lies in it. They depend on the size of
    /// the font alone, so that a line is as high whatever scripts it mixes; capitals stand in its
    /// middle.
    Q_INVOKABLE double lineHeight(const QFont& font) const;
    Q_INVOKABLE double lineBaseline(const QFont& font) const;

    /// The width of the widest digit in points, as views lay texts out.
    Q_INVOKABLE double digitWidth(const QFont& font) const;

    /// The size of a named style in points.
    static double size(TextStyle style);

  signals:
    /// Any colour or material has changed.
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void update();

    DesktopAppearance& appearance_;
    Compositor& compositor_;
    FontFamilies families_;
    bool dark_ = false;
    bool compositing_ = false;
};

}  // namespace velmora
