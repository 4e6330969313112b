// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ViewEngine.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QQuickItem>
#include <memory>

#include "Tests/Views/FakeAppearance.h"
#include "Tests/Views/FakeCompositor.h"
#include "Velmora/Presentation/Theme.h"

namespace velmora::test {

namespace {

constexpr const char* views[] = {"LaunchFlashView", "PinyinPopoverView", "EntryPopoverView",
                                 "SelectionPopoverView", "SettingsView"};

class ViewEngineTest : public ::testing::Test {
  protected:
    FakeAppearance appearance;
    FakeCompositor compositor;
    Theme theme{appearance, compositor};
};

TEST_F(ViewEngineTest, MakesAViewThatIsBeingReadInTheBackground) {
    ViewEngine engine(theme);
    for (const char* const view : views) {
        engine.loadInBackground(QString::fromLatin1(view));
    }
    const auto bubble = engine.create(
        QStringLiteral("PinyinPopoverView"),
        {{QStringLiteral("pinyin"), QStringLiteral("xué xí")}, {QStringLiteral("fontScale"), 1.0}});
    ASSERT_NE(bubble, nullptr);
    EXPECT_GT(bubble->implicitWidth(), 0);
    // What the reading of the first one has brought along may be there already.
    QCoreApplication::processEvents();
    EXPECT_NE(
        engine.create(QStringLiteral("LaunchFlashView"), {{QStringLiteral("cornerRadius"), 20.0}}),
        nullptr);
}

TEST_F(ViewEngineTest, MayGoWhileItReadsInTheBackground) {
    constexpr int mostTurns = 10;
    for (int turns = 0; turns < mostTurns; ++turns) {
        auto engine = std::make_unique<ViewEngine>(theme);
        for (const char* const view : views) {
            engine->loadInBackground(QString::fromLatin1(view));
        }
        for (int turn = 0; turn < turns; ++turn) {
            QCoreApplication::processEvents();
        }
        engine.reset();
        QCoreApplication::processEvents();
    }
}

}  // namespace

}  // namespace velmora::test
