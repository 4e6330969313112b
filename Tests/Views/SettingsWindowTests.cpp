// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QPointer>
#include <QTest>
#include <QTextLayout>
#include <QTextOption>
#include <string>
#include <vector>

#include "Tests/Views/WindowTest.h"

namespace velmora::test {

namespace {

class SettingsWindowTest : public WindowTest {
  protected:
    SettingsWindowTest() { open(); }

    void open() {
        settings.showSettings();
        EXPECT_TRUE(QTest::qWaitForWindowActive(settings.window()));
    }
    ViewWindow& window() { return *settings.window(); }
    QQuickItem& row(const char* name) { return named(window().view(), QString::fromLatin1(name)); }
    QQuickItem& part(const char* rowName, const char* name) {
        return named(row(rowName), QString::fromLatin1(name));
    }
    std::string reading(const char* rowName) {
        return part(rowName, "reading").property("text").toString().toStdString();
    }
    /// Takes in what the window system has to say of where the window stands.
    void awaitReportOfFrame() {
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window(), 30000));
        QCoreApplication::processEvents();
    }
    void drag(const char* rowName, double fraction) {
        QQuickItem& slider = part(rowName, "slider");
        clickAt(slider, {10 + fraction * (slider.width() - 20), slider.height() / 2});
    }
};

TEST_F(SettingsWindowTest, IsAnOrdinaryWindowInTheMiddleOfTheScreen) {
    EXPECT_EQ(window().title(), QStringLiteral("Velmora Settings"));
    const Qt::WindowFlags flags = window().flags();
    EXPECT_EQ(window().type(), Qt::Window);
    EXPECT_TRUE(flags.testFlag(Qt::WindowTitleHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
    EXPECT_EQ(window().width(), 520);
    EXPECT_EQ(window().height(), window().view().implicitHeight());
    EXPECT_EQ(window().minimumSize(), window().maximumSize());
    EXPECT_EQ(window().x() + window().width() / 2, 800);
    EXPECT_EQ(world.journal, testing::Journal{"activate"});
}

TEST_F(SettingsWindowTest, ItsTextsInTheirOrder) {
    world.permissions.screenCapture = false;
    open();
    EXPECT_EQ(texts(window().view()),
              (std::vector<std::string>{"Lookup",
                                        "Hover lookup enabled",
                                        "Dwell delay",
                                        "250 ms",
                                        "Script preference",
                                        "Simplified",
                                        "Traditional",
                                        "Popover",
                                        "Tone colors",
                                        "Auto-pronounce on lookup",
                                        "Font size",
                                        "100%",
                                        "Permissions",
                                        "Accessibility",
                                        "Granted",
                                        "Open Settings",
                                        "Screen Recording",
                                        "Needed",
                                        "Open Settings",
                                        "Refresh permissions",
                                        "Privacy",
                                        "Share anonymous usage analytics",
                                        "Velmora never sends looked-up text."}));
}

TEST_F(SettingsWindowTest, IsNewEachTimeAndFreedWhenClosed) {
    const QPointer<ViewWindow> first = &window();
    settings.showSettings();
    const QPointer<ViewWindow> second = &window();
    EXPECT_NE(first, second);
    QTest::qWait(1);
    EXPECT_TRUE(first.isNull());
    second->close();
    EXPECT_EQ(settings.window(), nullptr);
    QTest::qWait(1);
    EXPECT_TRUE(second.isNull());
}

TEST_F(SettingsWindowTest, EscapeClosesIt) {
    press(window(), Qt::Key_Escape);
    EXPECT_EQ(settings.window(), nullptr);
}

TEST_F(SettingsWindowTest, ComesBackWhereItWasClosed) {
    awaitReportOfFrame();
    window().setPosition(111, 222);
    awaitReportOfFrame();
    ASSERT_TRUE(QTest::qWaitFor([this] { return window().position() == QPoint(111, 222); }, 30000));
    window().close();
    EXPECT_EQ(world.settings.text("Windows/Velmora Settings").value_or("").substr(0, 12),
              "111 222 520 ");
    settings.showSettings();
    EXPECT_EQ(window().position(), QPoint(111, 222));
}

TEST_F(SettingsWindowTest, AForgottenOrUnreachablePlaceIsTheMiddle) {
    for (const char* text : {"", "nonsense", "1 2", "5000 100 520 600", "100 -50 520 600",
                             "-500 100 520 600", "100 980 520 600", "x 1 2 3"}) {
        window().close();
        world.settings.setText("Windows/Velmora Settings", text);
        settings.showSettings();
        EXPECT_EQ(window().x() + window().width() / 2, 800) << text;
    }
}

TEST_F(SettingsWindowTest, GoesWithTheModel) {
    world.model.reset();
    EXPECT_EQ(settings.window(), nullptr);
    settings.showSettings();
    EXPECT_EQ(settings.window(), nullptr);
}

TEST_F(SettingsWindowTest, SwitchesWorkBothWays) {
    clickOn(part("hoverLookupEnabled", "switch"));
    EXPECT_TRUE(world.model->hoverLookupEnabled());
    EXPECT_EQ(world.settings.boolean("hoverLookupEnabled"), true);
    world.model->setHoverLookupEnabled(false);
    EXPECT_FALSE(part("hoverLookupEnabled", "switch").property("checked").toBool());
    clickOn(part("toneColorsEnabled", "switch"));
    EXPECT_FALSE(world.model->toneColorsEnabled());
    clickOn(part("autoPronounce", "switch"));
    EXPECT_TRUE(world.model->autoPronounce());
    clickOn(part("analyticsEnabled", "switch"));
    EXPECT_FALSE(world.analytics.enabled);
    EXPECT_FALSE(part("analyticsEnabled", "switch").property("checked").toBool());
}

TEST_F(SettingsWindowTest, SlidersReachTheirEndsInSteps) {
    drag("dwellDelay", 0);
    EXPECT_EQ(world.model->dwellDelay(), 0.1);
    EXPECT_EQ(reading("dwellDelay"), "100 ms");
    drag("dwellDelay", 1);
    EXPECT_EQ(world.model->dwellDelay(), 0.8);
    EXPECT_EQ(reading("dwellDelay"), "800 ms");
    drag("dwellDelay", 0.37);
    EXPECT_EQ(world.model->dwellDelay(), 0.35);
    EXPECT_EQ(reading("dwellDelay"), "350 ms");
    drag("popoverFontScale", 0);
    EXPECT_EQ(reading("popoverFontScale"), "70%");
    drag("popoverFontScale", 1);
    EXPECT_EQ(reading("popoverFontScale"), "150%");
    EXPECT_EQ(world.model->popoverFontScale(), 1.5);
}

TEST_F(SettingsWindowTest, EveryStepReadsAsItsOwnNumber) {
    drag("popoverFontScale", 0);
    part("popoverFontScale", "slider").forceActiveFocus(Qt::TabFocusReason);
    for (int percent = 70; percent <= 150; percent += 5) {
        EXPECT_EQ(reading("popoverFontScale"), std::to_string(percent) + "%");
        EXPECT_NEAR(world.model->popoverFontScale(), percent / 100.0, 1e-12);
        press(window(), Qt::Key_Right);
    }
    EXPECT_EQ(reading("popoverFontScale"), "150%");
    drag("dwellDelay", 0);
    part("dwellDelay", "slider").forceActiveFocus(Qt::TabFocusReason);
    for (int milliseconds = 100; milliseconds <= 800; milliseconds += 50) {
        EXPECT_EQ(reading("dwellDelay"), std::to_string(milliseconds) + " ms");
        press(window(), Qt::Key_Up);
    }
}

TEST_F(SettingsWindowTest, ReadingsAreTruncated) {
    world.model->setDwellDelay(0.3559);
    EXPECT_EQ(reading("dwellDelay"), "355 ms");
    world.model->setPopoverFontScale(1.239);
    EXPECT_EQ(reading("popoverFontScale"), "123%");
    EXPECT_EQ(part("dwellDelay", "reading").width(), 64);
    EXPECT_EQ(part("popoverFontScale", "reading").width(), 48);
}

TEST_F(SettingsWindowTest, ReadingsAreSetAsWideAsAnyOtherText) {
    for (const char* name : {"dwellDelay", "popoverFontScale"}) {
        QQuickItem& item = part(name, "reading");
        QTextLayout text(item.property("text").toString(), item.property("font").value<QFont>());
        QTextOption option;
        option.setUseDesignMetrics(true);
        text.setTextOption(option);
        text.beginLayout();
        const QTextLine line = text.createLine();
        text.endLayout();
        EXPECT_NEAR(item.implicitWidth(), line.naturalTextWidth(), 0.5) << name;
    }
}

TEST_F(SettingsWindowTest, AValueOutsideTheRangeKeepsTheKnobOnItsTrack) {
    world.model->setPopoverFontScale(1e9);
    QQuickItem& slider = part("popoverFontScale", "slider");
    EXPECT_EQ(part("popoverFontScale", "knob").x(), slider.width() - 20);
    slider.forceActiveFocus(Qt::TabFocusReason);
    press(window(), Qt::Key_Home);
    EXPECT_EQ(reading("popoverFontScale"), "70%");
}

TEST_F(SettingsWindowTest, PicksAScript) {
    clickOn(named(window().view(), QStringLiteral("traditional")));
    EXPECT_EQ(world.model->preferredScript(), ChineseScript::traditional);
    row("preferredScript").forceActiveFocus(Qt::TabFocusReason);
    press(window(), Qt::Key_Left);
    EXPECT_EQ(world.model->preferredScript(), ChineseScript::simplified);
    press(window(), Qt::Key_Left);
    EXPECT_EQ(world.model->preferredScript(), ChineseScript::simplified);
}

TEST_F(SettingsWindowTest, PermissionsAreReadWhenItOpensAndWhenAsked) {
    QQuickItem* badge = &part("accessibility", "badge");
    EXPECT_EQ(badge->property("text").toString(), QStringLiteral("Granted"));
    EXPECT_EQ(badge->property("color").value<QColor>(), theme.green());
    world.permissions.accessibility = false;
    EXPECT_EQ(badge->property("text").toString(), QStringLiteral("Granted"));
    clickOn(row("refresh"));
    EXPECT_EQ(badge->property("text").toString(), QStringLiteral("Needed"));
    EXPECT_EQ(badge->property("color").value<QColor>(), theme.orange());
    world.permissions.accessibility = true;
    open();
    badge = &part("accessibility", "badge");
    EXPECT_EQ(badge->property("text").toString(), QStringLiteral("Granted"));
}

TEST_F(SettingsWindowTest, OpensTheDesktopsSettingsAndCountsIt) {
    world.analytics.captured.clear();
    clickOn(part("accessibility", "open"));
    clickOn(part("screenRecording", "open"));
    EXPECT_EQ(world.permissions.panes,
              (std::vector<std::string>{"Privacy_Accessibility", "Privacy_ScreenCapture"}));
    ASSERT_EQ(world.analytics.captured.size(), 2U);
    for (const auto& captured : world.analytics.captured) {
        EXPECT_EQ(captured.event, AnalyticsEvent::permissionSettingsOpened);
    }
    EXPECT_EQ(world.analytics.captured[0].properties,
              (AnalyticsProperties{{"permission", std::string("accessibility")}}));
    EXPECT_EQ(world.analytics.captured[1].properties,
              (AnalyticsProperties{{"permission", std::string("screen_recording")}}));
}

TEST_F(SettingsWindowTest, TheKeyboardReachesEveryControlInOrder) {
    std::vector<std::string> names;
    for (int i = 0; i < 10; ++i) {
        press(window(), Qt::Key_Tab);
        QQuickItem* focused = window().activeFocusItem();
        ASSERT_NE(focused, nullptr);
        QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(focused);
        names.push_back(interface->text(QAccessible::Name).toStdString());
    }
    EXPECT_EQ(names, (std::vector<std::string>{
                         "Hover lookup enabled", "Dwell delay", "Script preference", "Tone colors",
                         "Auto-pronounce on lookup", "Font size", "Open Settings, Accessibility",
                         "Open Settings, Screen Recording", "Refresh permissions",
                         "Share anonymous usage analytics"}));
    press(window(), Qt::Key_Space);
    EXPECT_FALSE(world.analytics.enabled);
}

TEST_F(SettingsWindowTest, AssistiveProgramsReadAndMoveASlider) {
    QAccessibleInterface* slider =
        QAccessible::queryAccessibleInterface(&part("dwellDelay", "slider"));
    EXPECT_EQ(slider->role(), QAccessible::Slider);
    QAccessibleValueInterface* value = slider->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toDouble(), 0.25);
    EXPECT_EQ(value->minimumValue().toDouble(), 0.1);
    EXPECT_EQ(value->maximumValue().toDouble(), 0.8);
    EXPECT_EQ(value->minimumStepSize().toDouble(), 0.05);
    value->setCurrentValue(0.52);
    EXPECT_EQ(world.model->dwellDelay(), 0.5);
    EXPECT_EQ(value->currentValue().toDouble(), 0.5);
    world.model->setDwellDelay(0.3);
    EXPECT_EQ(value->currentValue().toDouble(), 0.3);
}

TEST_F(SettingsWindowTest, ALowScreenScrolls) {
    const double ratio = qGuiApp->devicePixelRatio();
    screens.set({{1, {0, 0, 800 * ratio, 480 * ratio}, ratio, {0, 0, 800 * ratio, 480 * ratio}}});
    open();
    EXPECT_LT(window().height(), 480);
    QQuickItem& analytics = part("analyticsEnabled", "switch");
    EXPECT_GT(analytics.mapToScene({}).y(), window().height());
    press(window(), Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_LT(analytics.mapToScene({}).y(), window().height());
}

TEST_F(SettingsWindowTest, EighteenPointsOfPadding) {
    QQuickItem& first = row("hoverLookupEnabled");
    EXPECT_EQ(first.mapToScene({}).x(), 18);
    EXPECT_EQ(first.width(), 520 - 36);
    QQuickItem& note = row("privacyNote");
    EXPECT_EQ(note.property("text").toString(),
              QStringLiteral("Velmora never sends looked-up text."));
}

}  // namespace

}  // namespace velmora::test
