// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <QQuickItem>
#include <QString>

#include "Tests/Views/FakeAppearance.h"
#include "Tests/Views/FakeCompositor.h"
#include "Tests/Views/FixedScreens.h"
#include "Tests/Views/RecordingSpeaker.h"
#include "Velmora/Presentation/PopoverPanelController.h"

namespace velmora::test {

/// A popover controller over one screen of 1600 × 1000 points without a display.
class ViewTest : public ::testing::Test {
  protected:
    static constexpr Rect anchor{700, 600, 60, 24};

    ViewTest();

    /// Frees what is to be freed later, which only an event loop would do, while the theme is here.
    void TearDown() override;

    void showEntry(const LookupResult& result, double fontScale = 1, bool toneColorsEnabled = true);
    void showSelection(const std::vector<LookupResult>& results, const std::string& text,
                       double fontScale = 1);

    PanelWindow& panel() { return *popover.panel(); }
    QQuickItem& view() { return *panel().view(); }

    /// The item of this name in the view; fails the test and gives the view where there is none.
    QQuickItem& item(const QString& name);

    /// Every item of this name in an item, in the order in which they stand.
    static QList<QQuickItem*> items(QQuickItem& root, const QString& name);

    /// Where an item stands in the view, in points.
    QRectF frame(QQuickItem& item);
    QRectF frame(const QString& name) { return frame(item(name)); }

    /// The first baseline of an item in the view.
    double baseline(QQuickItem& item) { return frame(item).y() + item.baselineOffset(); }
    double baseline(const QString& name) { return baseline(item(name)); }

    /// Delivers a click of the mouse in the middle of an item.
    void click(QQuickItem& item);

    /// What the panel shows, over a plain ground where it is translucent.
    QImage picture();

    FakeAppearance appearance;
    FakeCompositor compositor;
    Theme theme{appearance, compositor};
    ViewEngine views{theme};
    FixedScreens screens;
    RecordingSpeaker speaker;
    PopoverPanelController popover{speaker, screens, views};
};

}  // namespace velmora::test
