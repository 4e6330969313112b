// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ViewWindow.h"

#include <sys/mman.h>

#include <QEventLoop>
#include <QExposeEvent>
#include <QIcon>
#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "Tests/Views/ViewTest.h"

namespace velmora::test {

namespace {

class ViewWindowTest : public ViewTest {
  protected:
    std::unique_ptr<ViewWindow> window() {
        auto result = std::make_unique<ViewWindow>(
            views.theme(), views.create(QStringLiteral("LaunchFlashView"),
                                        {{QStringLiteral("cornerRadius"), 0.0}}));
        result->makeTitled({0, 0, 1600, 1000});
        return result;
    }
};

TEST_F(ViewWindowTest, IsDrawnBeforeItComesToTheScreenAndPaintedAfterIt) {
    const auto shown = window();
    const QSignalSpy drawn(shown.get(), &QQuickWindow::afterRendering);
    const QSignalSpy painted(shown.get(), &QQuickWindow::frameSwapped);
    shown->present();
    EXPECT_FALSE(shown->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawn.count() > 0; }));
    EXPECT_FALSE(shown->isVisible());
    EXPECT_TRUE(QTest::qWaitForWindowExposed(shown.get()));
    EXPECT_EQ(painted.count(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return painted.count() > 0; }));
}

TEST_F(ViewWindowTest, CarriesTheIconBeforeItComesToTheScreen) {
    QList<QSize> sizes;  // As long as the window, which is hidden when it goes.
    const auto shown = window();
    QObject::connect(shown.get(), &QWindow::visibleChanged, shown.get(),
                     [&, window = shown.get()] { sizes = window->icon().availableSizes(); });
    shown->present();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown->isVisible(); }));
    EXPECT_EQ(sizes, (QList<QSize>{{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}}));
    // Not only empty ground: the middle of its stroke is white, a place beside it of its colour.
    const QImage drawn = shown->icon().pixmap(QSize(64, 64), 1).toImage();
    EXPECT_EQ(drawn.pixelColor(26, 33), QColor(Qt::white));
    EXPECT_EQ(drawn.pixelColor(32, 60), QColor(0xb3, 0x26, 0x1e));
    EXPECT_EQ(drawn.pixelColor(0, 0).alpha(), 0);
}

TEST_F(ViewWindowTest, ComesOnceHoweverOftenItIsAskedFor) {
    const auto shown = window();
    const QSignalSpy visibility(shown.get(), &QWindow::visibleChanged);
    shown->present();
    shown->present();
    EXPECT_TRUE(QTest::qWaitForWindowActive(shown.get()));
    shown->present();
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(visibility.count(), 1);
}

TEST_F(ViewWindowTest, NeverComesOnceItIsDisposedOf) {
    auto shown = window();
    const QSignalSpy gone(shown.get(), &QObject::destroyed);
    const QSignalSpy visibility(shown.get(), &QWindow::visibleChanged);
    QEventLoop outer;
    QTimer::singleShot(0, &outer, [&] {
        shown->present();
        ViewWindow::dispose(std::move(shown));
        // Whoever closed it may look for events before it is freed: timers fire in their order,
        // and each of its steps to the screen would take one.
        constexpr int mostSteps = 10;
        QEventLoop inner;
        QTimer steps;
        QObject::connect(&steps, &QTimer::timeout, &inner, [&inner, step = 0]() mutable {
            if (++step == mostSteps) {
                inner.quit();
            }
        });
        steps.start(0);
        inner.exec();
        EXPECT_EQ(gone.count(), 0);
        outer.quit();
    });
    outer.exec();
    EXPECT_TRUE(QTest::qWaitFor([&] { return gone.count() > 0; }));
    EXPECT_EQ(visibility.count(), 0);
}

// Without an event loop it stays for long, maybe longer than the theme.
TEST_F(ViewWindowTest, AsksForNothingOnceItIsDisposedOf) {
    auto shown = window();
    const QSignalSpy painted(shown.get(), &QQuickWindow::frameSwapped);
    shown->present();
    EXPECT_TRUE(QTest::qWaitFor([&] { return painted.count() > 0; }));
    QCoreApplication::processEvents();  // Frames that are due.
    ViewWindow* const disposed = shown.get();
    compositor.holdAnswers();
    ViewWindow::dispose(std::move(shown));
    // What may still be under way to it.
    QEvent frame(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(disposed, &frame);
    QExposeEvent expose(QRect(0, 0, 10, 10));
    QCoreApplication::sendEvent(disposed, &expose);
    appearance.set(DesktopAppearance::ColorScheme::dark);
    EXPECT_EQ(compositor.heldAnswers(), 0U);
}

/// Its memory is gone as soon as it is freed: whoever touches it then ends the program.
class UnmappedWindow : public ViewWindow {
  public:
    using ViewWindow::ViewWindow;

    static void* operator new(std::size_t size) {
        void* const memory =
            mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        return memory == MAP_FAILED ? throw std::bad_alloc() : memory;
    }
    static void operator delete(void* memory, std::size_t size) { munmap(memory, size); }
};

TEST_F(ViewWindowTest, TouchesNothingOfItselfOnceItIsFreed) {
    auto shown = std::make_unique<UnmappedWindow>(
        views.theme(),
        views.create(QStringLiteral("LaunchFlashView"), {{QStringLiteral("cornerRadius"), 0.0}}));
    const QSignalSpy gone(shown.get(), &QObject::destroyed);
    ViewWindow::dispose(std::move(shown));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(gone.count(), 1);
}

}  // namespace

}  // namespace velmora::test
