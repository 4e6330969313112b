// SPDX-License-Identifier: MIT
#include <QPointer>
#include <QTest>
#include <limits>

#include "Tests/Views/WindowTest.h"

namespace velmora::test {

namespace {

using Phase = UpdateWindowState::Phase;

class UpdateWindowTest : public WindowTest {
  protected:
    UpdateWindowTest() {
        updates.setActions([this] { ++installs; }, [this] { ++laters; });
    }

    static UpdateWindowState offer() {
        UpdateWindowState state;
        state.phase = Phase::available;
        state.version = "2.0";
        state.currentVersion = "1.0";
        state.releaseNotes = "<b>Bold</b> & <a href='https://example.org'>plain</a>";
        return state;
    }
    ViewWindow& window() { return *updates.window(); }
    QQuickItem& part(const char* name) { return named(window().view(), QString::fromLatin1(name)); }
    std::string text(const char* name) {
        return part(name).property("text").toString().toStdString();
    }

    int installs = 0;
    int laters = 0;
};

TEST_F(UpdateWindowTest, OffersAVersionWithItsNotesAsPlainText) {
    updates.show(offer());
    EXPECT_EQ(text("heading"), "Velmora 2.0 is available");
    EXPECT_EQ(text("detail"), "You have version 1.0.");
    EXPECT_EQ(text("notes"), offer().releaseNotes);
    EXPECT_FALSE(part("progressBar").isVisible());
    clickOn(part("install"));
    EXPECT_EQ(installs, 1);
    EXPECT_EQ(world.journal, testing::Journal{"activate"});
}

TEST_F(UpdateWindowTest, LaterAndClosingItTellOnce) {
    updates.show(offer());
    clickOn(part("later"));
    EXPECT_EQ(laters, 1);
    EXPECT_EQ(updates.window(), nullptr);
    updates.show(offer());
    const QPointer<ViewWindow> shown = &window();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(shown));
    window().close();
    EXPECT_EQ(laters, 2);
    EXPECT_EQ(updates.window(), nullptr);
    QTest::qWait(1);
    EXPECT_TRUE(shown.isNull());
}

TEST_F(UpdateWindowTest, ClosedFromOutsideItTellsNobody) {
    updates.show(offer());
    updates.close();
    EXPECT_EQ(laters, 0);
    EXPECT_EQ(updates.window(), nullptr);
    updates.close();
}

TEST_F(UpdateWindowTest, ShowsTheProgressOfADownload) {
    UpdateWindowState state = offer();
    updates.update(state);
    EXPECT_EQ(updates.window(), nullptr);
    updates.show(state);
    const ViewWindow* before = &window();
    state.phase = Phase::downloading;
    state.progress = 0.5;
    updates.update(state);
    EXPECT_EQ(&window(), before);
    EXPECT_EQ(text("detail"), "Downloading, 50%");
    EXPECT_EQ(part("progressFill").width(), part("progressBar").width() / 2);
    clickOn(part("install"));
    EXPECT_EQ(installs, 0);
    state.progress = std::numeric_limits<double>::quiet_NaN();
    updates.update(state);
    EXPECT_EQ(part("progressFill").width(), 0);
    state.progress = 7;
    updates.update(state);
    EXPECT_EQ(part("progressFill").width(), part("progressBar").width());
}

TEST_F(UpdateWindowTest, AMessageTakesLittleRoom) {
    UpdateWindowState state;
    state.phase = Phase::checking;
    state.currentVersion = "1.0";
    updates.show(state);
    EXPECT_EQ(text("later"), "Cancel");
    state.phase = Phase::message;
    state.message = "The update feed is damaged.";
    updates.show(state);
    EXPECT_EQ(text("heading"), state.message);
    EXPECT_EQ(text("later"), "Close");
    EXPECT_FALSE(part("install").isVisible());
    EXPECT_LT(window().height(), 200);
    updates.show(offer());
    EXPECT_EQ(window().height(), 400);
}

TEST_F(UpdateWindowTest, EndlessTextsAreBounded) {
    UpdateWindowState state = offer();
    state.releaseNotes = std::string(5'000'000, 'x');
    state.version = std::string(100'000, '9');
    updates.show(state);
    EXPECT_LE(text("notes").size(), 20000U);
    EXPECT_EQ(window().height(), 400);
    part("later");
    EXPECT_TRUE(part("later").mapToScene({}).y() < 400);
}

TEST_F(UpdateWindowTest, TheKeyboardAloneIsEnough) {
    updates.show(offer());
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    press(window(), Qt::Key_Return);
    EXPECT_EQ(installs, 1);
    press(window(), Qt::Key_Tab);
    EXPECT_EQ(window().activeFocusItem()->objectName(), QStringLiteral("later"));
    press(window(), Qt::Key_Space);
    EXPECT_EQ(laters, 1);
}

}  // namespace

}  // namespace velmora::test
