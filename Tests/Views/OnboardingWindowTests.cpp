// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "Tests/Views/WindowTest.h"

namespace velmora::test {

namespace {

class OnboardingWindowTest : public WindowTest {
  protected:
    OnboardingWindowTest() { open(true, "Continue in Menu Bar"); }

    void open(bool isFirstLaunch, const char* title) {
        onboarding.open(
            isFirstLaunch, title, [this] { ++completed; }, [this] { ++closed; });
        EXPECT_TRUE(QTest::qWaitForWindowActive(onboarding.window()));
    }
    ViewWindow& window() { return *onboarding.window(); }
    QQuickItem& part(const char* name) { return named(window().view(), QString::fromLatin1(name)); }
    int step() { return window().view().property("step").toInt(); }
    QString mainTitle() { return part("main").property("text").toString(); }
    void moveTo(int target) {
        QMetaObject::invokeMethod(&window().view(), "move", Q_ARG(int, target));
    }

    /// Waits for the end of the slide from one step to the other.
    bool hasSettled() {
        return QTest::qWaitFor(
            [this] { return window().view().property("displacement").toDouble() == 0; }, 30000);
    }

    int completed = 0;
    int closed = 0;
};

TEST_F(OnboardingWindowTest, IsABorderlessRoundWindowOfItsSize) {
    EXPECT_EQ(window().title(), QStringLiteral("Velmora Onboarding"));
    EXPECT_EQ(window().size(), QSize(720, 680));
    EXPECT_TRUE(window().flags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(window().view().property("cornerRadius").toDouble(), 30);
    EXPECT_EQ(window().geometry().center(), QPoint(799, 499));
    EXPECT_EQ(window().color().alpha(), 0);
    compositor.set(false);
    EXPECT_EQ(window().color(), theme.window());
    EXPECT_FALSE(window().mask().isEmpty());
    EXPECT_FALSE(window().mask().contains(QPoint(2, 2)));
    EXPECT_TRUE(window().mask().contains(QPoint(360, 2)));
}

TEST_F(OnboardingWindowTest, WalksThroughTheStepsAndBack) {
    EXPECT_EQ(step(), 0);
    EXPECT_FALSE(part("back").isEnabled());
    EXPECT_EQ(mainTitle(), QStringLiteral("Continue"));
    clickOn(part("main"));
    EXPECT_EQ(step(), 1);
    EXPECT_TRUE(part("back").isEnabled());
    EXPECT_EQ(mainTitle(), QStringLiteral("Continue"));
    EXPECT_EQ(part("main").property("symbol").toString(), QStringLiteral("chevron.right"));
    clickOn(part("main"));
    EXPECT_EQ(step(), 2);
    EXPECT_EQ(mainTitle(), QStringLiteral("Continue in Menu Bar"));
    EXPECT_EQ(part("main").property("symbol").toString(), QStringLiteral("checkmark"));
    EXPECT_EQ(window().view().property("transitionDirection").toInt(), 1);
    clickOn(part("back"));
    EXPECT_EQ(step(), 1);
    EXPECT_EQ(window().view().property("transitionDirection").toInt(), -1);
    clickOn(part("main"));
    EXPECT_EQ(completed, 0);
    clickOn(part("main"));
    EXPECT_EQ(completed, 1);
    EXPECT_EQ(closed, 0);
    EXPECT_NE(onboarding.window(), nullptr);
}

TEST_F(OnboardingWindowTest, WhatIsMadeInAdvanceShowsWhatIsToldLater) {
    onboarding.close();
    onboarding.prepare();
    onboarding.prepare();
    world.model->setHoverLookupEnabled(true);
    open(false, "Done");
    EXPECT_FALSE(window().view().property("isFirstLaunch").toBool());
    moveTo(2);
    EXPECT_EQ(mainTitle(), QStringLiteral("Done"));
    EXPECT_TRUE(part("hoverSwitch").property("checked").toBool());
    // The next one is made anew, at its first step.
    open(true, "Continue in Menu Bar");
    EXPECT_EQ(step(), 0);
    EXPECT_TRUE(window().view().property("isFirstLaunch").toBool());
}

TEST_F(OnboardingWindowTest, WhatIsMadeInAdvanceGoesWithTheModel) {
    onboarding.close();
    onboarding.prepare();
    world.model.reset();
    onboarding.prepare();
    onboarding.open(
        true, "Done", [] {}, [] {});
    EXPECT_EQ(onboarding.window(), nullptr);
    world.start();
    world.model->setHoverLookupEnabled(true);
    onboarding.attach(*world.model);
    open(true, "Done");
    moveTo(2);
    EXPECT_TRUE(part("hoverSwitch").property("checked").toBool());
}

TEST_F(OnboardingWindowTest, ItsTextsInTheirOrder) {
    using Texts = std::vector<std::string>;
    const auto expectTexts = [this](Texts expected, const char* mainTitle) {
        ASSERT_TRUE(hasSettled());
        const std::string caption = "Velmora will keep running from the menu bar.";
        expected.insert(expected.end(), {"Back", caption, mainTitle});
        EXPECT_EQ(texts(window().view()), expected);
    };
    expectTexts(
        {"知道", "Velmora", "Understand Chinese wherever you read it.", "Hover", "Learn", "Listen"},
        "Continue");
    moveTo(1);
    expectTexts({"Velmora runs quietly from the menu bar",
                 "Velmora lives in the menu bar and opens a compact dictionary\n"
                 "popover over Chinese text.",
                 "Hover to", "zhī dào", "知道"},
                "Continue");
    moveTo(2);
    expectTexts({"Enable lookup access",
                 "These permissions let Velmora detect text under the cursor\n"
                 "and fall back to OCR in stubborn apps.",
                 "Accessibility", "Reads native text near the cursor and monitors hover dwell.",
                 "Request", "Open Settings", "Screen Recording",
                 "Captures a small region for OCR when an app does not expose text.", "Request",
                 "Open Settings", "Enable hover lookup", "Refresh"},
                "Continue in Menu Bar");
}

TEST_F(OnboardingWindowTest, FontsAndMeasures) {
    const auto points = [](QQuickItem& item) {
        return item.property("font").value<QFont>().pointSizeF() * 96 / 72;
    };
    const auto label = [this](const char* text) -> QQuickItem& {
        const QString wanted = QString::fromUtf8(text);
        for (QQuickItem* const item : window().view().findChildren<QQuickItem*>()) {
            if (item->property("text").toString() == wanted &&
                QByteArray(item->metaObject()->className()).startsWith("Label_")) {
                return *item;
            }
        }
        ADD_FAILURE() << text;
        return window().view();
    };
    const auto weight = [](QQuickItem& item) {
        return item.property("font").value<QFont>().weight();
    };
    moveTo(2);
    moveTo(1);
    for (const auto& [text, size] :
         std::vector<std::pair<const char*, double>>{{"Velmora", 40}, {"zhī dào", 11}}) {
        EXPECT_NEAR(points(label(text)), size, 1e-9) << text;
        EXPECT_EQ(weight(label(text)), QFont::DemiBold) << text;
    }
    QQuickItem& mark = part("mark");
    EXPECT_NEAR(points(mark), 72, 1e-9);
    EXPECT_EQ(weight(mark), QFont::DemiBold);
    EXPECT_NEAR(points(label("Enable lookup access")), 34, 1e-9);
    QQuickItem& promise = label("Understand Chinese wherever you read it.");
    EXPECT_NEAR(points(promise), Theme::size(Theme::TextStyle::title3), 1e-9);
    EXPECT_EQ(weight(promise), QFont::Medium);
    EXPECT_EQ(QSizeF(part("close").width(), part("close").height()), QSizeF(30, 30));
    EXPECT_EQ(part("accessibility").property("padding").toDouble(), 18);
    EXPECT_EQ(part("demo").property("resourceName").toString(), QStringLiteral("onboarding-demo"));
    std::vector<std::string> icons;
    for (const QQuickItem* const pill : items(window().view(), QStringLiteral("pill"))) {
        icons.push_back(pill->property("icon").toString().toStdString());
    }
    EXPECT_EQ(icons, (std::vector<std::string>{"cursorarrow.motionlines", "character.book.closed",
                                               "speaker.wave.2.fill"}));
}

TEST_F(OnboardingWindowTest, ReadsDoneWhenItIsOpenedLater) {
    onboarding.close();
    open(false, "Done");
    moveTo(2);
    EXPECT_EQ(mainTitle(), QStringLiteral("Done"));
}

TEST_F(OnboardingWindowTest, MovingToTheSameStepDoesNothing) {
    moveTo(2);
    EXPECT_EQ(window().view().property("transitionDirection").toInt(), 1);
    moveTo(0);
    EXPECT_EQ(window().view().property("transitionDirection").toInt(), -1);
    window().view().setProperty("elapsed", 5.0);
    moveTo(0);
    EXPECT_EQ(window().view().property("transitionDirection").toInt(), -1);
    EXPECT_EQ(window().view().property("previousStep").toInt(), 2);
}

TEST_F(OnboardingWindowTest, SlidesAsACriticallyDampedSpring) {
    QQuickItem& view = window().view();
    for (const double seconds : {0.0, 0.1, 0.25, 0.5}) {
        view.setProperty("elapsed", seconds);
        const double angle = 2 * std::numbers::pi / 0.38 * seconds;
        EXPECT_NEAR(view.property("displacement").toDouble(), (1 + angle) * std::exp(-angle), 1e-9);
    }
    view.setProperty("previousStep", 0);
    view.setProperty("step", 1);
    view.setProperty("elapsed", 0.1);
    EXPECT_GT(part("lookup").x(), 0);
    EXPECT_LT(part("welcome").x(), 0);
    EXPECT_TRUE(part("welcome").isVisible());
    view.setProperty("transitionDirection", -1);
    EXPECT_LT(part("lookup").x(), 0);
    EXPECT_GT(part("welcome").x(), 0);
    view.setProperty("elapsed", 1.0);
    EXPECT_EQ(part("lookup").x(), 0);
    EXPECT_FALSE(part("welcome").isVisible());
}

TEST_F(OnboardingWindowTest, OpensWithItsFirstStepAndMakesTheOthersBehindIt) {
    const auto made = [this](const char* name) {
        const auto* const item = window().view().findChild<QQuickItem*>(QString::fromLatin1(name));
        return item != nullptr;
    };
    onboarding.close();
    onboarding.open(
        true, "Done", [] {}, [] {});
    EXPECT_TRUE(made("mark"));
    EXPECT_FALSE(made("demo"));
    EXPECT_FALSE(made("refresh"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return made("demo") && made("refresh"); }, 30000));
    // Whoever is faster has it at once.
    onboarding.close();
    onboarding.open(
        true, "Done", [] {}, [] {});
    moveTo(2);
    EXPECT_TRUE(made("refresh"));
}

TEST_F(OnboardingWindowTest, TheSlideRunsToItsEnd) {
    clickOn(part("main"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !part("welcome").isVisible(); }, 30000));
    EXPECT_EQ(part("lookup").x(), 0);
}

TEST_F(OnboardingWindowTest, CloseButtonAndEscapeComplete) {
    clickOn(part("close"));
    EXPECT_EQ(completed, 1);
    press(window(), Qt::Key_Escape);
    EXPECT_EQ(completed, 2);
}

TEST_F(OnboardingWindowTest, TheCloseButtonSaysWhatItIsUnderARestingPointer) {
    QQuickItem& close = part("close");
    const auto isSaid = [this] {
        const auto shown = texts(*window().contentItem());
        return std::ranges::count(shown, "Close") == 1;
    };
    EXPECT_FALSE(isSaid());
    const QPointF middle = close.mapToScene({15, 15});
    QMouseEvent rest(QEvent::MouseMove, middle, window().mapToGlobal(middle), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &rest);
    EXPECT_TRUE(QTest::qWaitFor(isSaid, 30000));
    const QPointF aside(100, 300);
    QMouseEvent leave(QEvent::MouseMove, aside, window().mapToGlobal(aside), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window(), &leave);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isSaid(); }, 30000));
}

TEST_F(OnboardingWindowTest, TellsOnceThatItClosed) {
    const QPointer<ViewWindow> shown = &window();
    window().close();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(onboarding.window(), nullptr);
    onboarding.close();
    EXPECT_EQ(closed, 1);
    QTest::qWait(1);
    EXPECT_TRUE(shown.isNull());
}

TEST_F(OnboardingWindowTest, ClosedByTheModelItTellsToo) {
    onboarding.close();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(completed, 0);
    EXPECT_EQ(onboarding.window(), nullptr);
}

TEST_F(OnboardingWindowTest, CompletingMayCloseTheWindowAtOnce) {
    onboarding.close();
    onboarding.open(
        true, "Done", [this] { onboarding.close(); }, [this] { ++closed; });
    clickOn(part("close"));
    EXPECT_EQ(closed, 2);
    EXPECT_EQ(onboarding.window(), nullptr);
}

TEST_F(OnboardingWindowTest, GoesWithTheModelWithoutAWord) {
    world.model.reset();
    EXPECT_EQ(onboarding.window(), nullptr);
    EXPECT_EQ(closed, 0);
}

TEST_F(OnboardingWindowTest, AsksForPermissions) {
    world.permissions.accessibility = false;
    world.permissions.screenCapture = false;
    world.model->refreshPermissions();
    moveTo(2);
    ASSERT_TRUE(hasSettled());
    QQuickItem& accessibility = part("accessibility");
    QQuickItem& recording = part("screenRecording");
    QQuickItem& status = named(accessibility, QStringLiteral("status"));
    EXPECT_EQ(status.property("name").toString(),
              QStringLiteral("lock.open.trianglebadge.exclamationmark"));
    EXPECT_EQ(status.property("color").value<QColor>(), theme.orange());
    clickOn(named(accessibility, QStringLiteral("request")));
    EXPECT_EQ(world.permissions.prompts, 1);
    clickOn(named(recording, QStringLiteral("request")));
    EXPECT_EQ(world.permissions.requests, 1);
    world.permissions.panes.clear();
    world.analytics.captured.clear();
    clickOn(named(accessibility, QStringLiteral("openSettings")));
    clickOn(named(recording, QStringLiteral("openSettings")));
    ASSERT_EQ(world.analytics.captured.size(), 2U);
    EXPECT_EQ(world.analytics.captured[0].event, AnalyticsEvent::permissionSettingsOpened);
    EXPECT_EQ(world.analytics.captured[0].properties,
              (AnalyticsProperties{{"permission", std::string("accessibility")}}));
    EXPECT_EQ(world.analytics.captured[1].properties,
              (AnalyticsProperties{{"permission", std::string("screen_recording")}}));
    EXPECT_EQ(world.permissions.panes,
              (std::vector<std::string>{"Privacy_Accessibility", "Privacy_ScreenCapture"}));
    world.permissions.accessibility = true;
    clickOn(part("refresh"));
    EXPECT_EQ(status.property("name").toString(), QStringLiteral("checkmark.seal.fill"));
    EXPECT_EQ(status.property("color").value<QColor>(), theme.green());
    clickOn(part("hoverSwitch"));
    EXPECT_TRUE(world.model->hoverLookupEnabled());
}

TEST_F(OnboardingWindowTest, TheKeyboardAloneIsEnough) {
    press(window(), Qt::Key_Return);
    EXPECT_EQ(step(), 1);
    press(window(), Qt::Key_Return);
    EXPECT_EQ(step(), 2);
    std::vector<std::string> names;
    for (int i = 0; i < 9; ++i) {
        press(window(), Qt::Key_Tab);
        names.push_back(window().activeFocusItem()->objectName().toStdString());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"request", "openSettings", "request", "openSettings",
                                               "hoverSwitch", "refresh", "back", "main", "close"}));
    part("hoverSwitch").forceActiveFocus(Qt::TabFocusReason);
    press(window(), Qt::Key_Space);
    EXPECT_TRUE(world.model->hoverLookupEnabled());
    press(window(), Qt::Key_Return);
    EXPECT_EQ(completed, 1);
}

TEST_F(OnboardingWindowTest, NothingInTheFooterOverlaps) {
    moveTo(2);
    QQuickItem& caption = part("caption");
    QQuickItem& main = part("main");
    EXPECT_LT(caption.mapToScene({caption.width(), 0}).x(), main.mapToScene({}).x());
    EXPECT_EQ(items(window().view(), QStringLiteral("dot")).size(), 3);
    QQuickItem& demo = part("demoFrame");
    EXPECT_EQ(QSizeF(demo.width(), demo.height()), QSizeF(520, 303));
}

}  // namespace

}  // namespace velmora::test
