// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/AnimatedGIFView.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QMovie>
#include <QPainter>
#include <QTest>

namespace velmora::test {

namespace {

constexpr QSize frameSize(520, 303);

QImage drawn(AnimatedGIFView& view) {
    QImage image(frameSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    view.paint(&painter);
    return image;
}

/// The number of a picture's pixels that are not opaque.
int clearPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) < 255 ? 1 : 0;
        }
    }
    return count;
}

TEST(AnimatedGIFView, AMissingAnimationLeavesItEmpty) {
    AnimatedGIFView view;
    view.setSize(frameSize);
    view.setResourceName(QStringLiteral("no-such-animation"));
    EXPECT_FALSE(view.hasAnimation());
    view.setPlaying(false);
    EXPECT_EQ(drawn(view).pixelColor(260, 150).alpha(), 0);
}

TEST(AnimatedGIFView, FillsItselfWithTheAnimationFromTheFirstMoment) {
    AnimatedGIFView view;
    view.setPlaying(false);
    view.setSize(frameSize);
    view.setResourceName(QStringLiteral("onboarding-demo"));
    ASSERT_TRUE(view.hasAnimation());
    EXPECT_EQ(clearPixels(drawn(view)), 0);
    view.setRadius(14);
    const QImage rounded = drawn(view);
    EXPECT_EQ(rounded.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(rounded.pixelColor(260, 0).alpha(), 255);
    EXPECT_GT(clearPixels(rounded), 0);
}

TEST(AnimatedGIFView, TheFirstAnimationStays) {
    AnimatedGIFView view;
    view.setSize(frameSize);
    view.setPlaying(false);
    view.setResourceName(QStringLiteral("onboarding-demo"));
    const QImage before = drawn(view);
    view.setResourceName(QStringLiteral("no-such-animation"));
    EXPECT_TRUE(view.hasAnimation());
    EXPECT_EQ(drawn(view), before);
}

TEST(AnimatedGIFView, PlaysUntilItIsPaused) {
    AnimatedGIFView view;
    view.setSize(frameSize);
    view.setResourceName(QStringLiteral("onboarding-demo"));
    const QImage first = drawn(view);
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawn(view) != first; }, 30000));
    view.setPlaying(false);
    const QImage paused = drawn(view);
    // Another one goes on meanwhile: long enough for several frames.
    AnimatedGIFView other;
    other.setSize(frameSize);
    other.setResourceName(QStringLiteral("onboarding-demo"));
    const QImage start = drawn(other);
    EXPECT_TRUE(QTest::qWaitFor([&] { return drawn(other) != start; }, 30000));
    EXPECT_EQ(drawn(view), paused);
}

TEST(AnimatedGIFView, TheRecordingFitsItsFrameAndBeginsAnewForEver) {
    const QString file = QStringLiteral(":/animations/onboarding-demo.gif");
    ASSERT_TRUE(QFile::exists(file));
    EXPECT_LE(QFile(file).size(), 1'000'000);
    QMovie movie(file);
    ASSERT_TRUE(movie.isValid());
    ASSERT_TRUE(movie.jumpToFrame(0));
    EXPECT_EQ(movie.loopCount(), -1);
    EXPECT_EQ(movie.frameRect().size(), 2 * frameSize);
    const QImage first = movie.currentImage();
    QImage last = first;
    int frames = 1;
    int milliseconds = movie.nextFrameDelay();
    while (movie.jumpToNextFrame() && movie.currentFrameNumber() != 0 && frames < 10000) {
        last = movie.currentImage();
        milliseconds += movie.nextFrameDelay();
        ++frames;
    }
    EXPECT_GT(frames, 30);
    EXPECT_LT(milliseconds, 20000);
    // Nothing jumps where it begins anew.
    EXPECT_EQ(first, last);
}

}  // namespace

}  // namespace velmora::test
