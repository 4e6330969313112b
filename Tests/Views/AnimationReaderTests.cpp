// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/AnimationReader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <vector>

namespace velmora::test {

namespace {

const QString recording = QStringLiteral(":/animations/onboarding-demo.gif");

AnimationFrame taken(AnimationReader& reader) {
    return reader.next().result();
}

TEST(AnimationReader, ReadsEveryFrameAndBeginsAnewBehindTheLast) {
    AnimationReader reader(recording);
    ASSERT_TRUE(reader.isValid());
    const AnimationFrame first = taken(reader);
    ASSERT_EQ(first.image.size(), QSize(1040, 606));
    EXPECT_GT(first.delay.count(), 0);
    const AnimationFrame second = taken(reader);
    EXPECT_NE(second.image, first.image);
    // The recording ends as it begins, so that its second frame tells where it begins anew.
    constexpr int mostFrames = 10000;
    int frames = 2;
    AnimationFrame before = second;
    for (; frames < mostFrames; ++frames) {
        const AnimationFrame frame = taken(reader);
        ASSERT_FALSE(frame.image.isNull()) << frames;
        if (before.image == first.image && frame.image == second.image) {
            break;
        }
        before = frame;
    }
    EXPECT_GT(frames, 30);
    EXPECT_LT(frames, mostFrames);
}

TEST(AnimationReader, AFileThatIsMissingOrNoPictureIsNotValid) {
    EXPECT_FALSE(AnimationReader(QStringLiteral(":/animations/none.gif")).isValid());
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("text.gif"));
    QFile file(name);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("no picture");
    file.close();
    AnimationReader reader(name);
    EXPECT_FALSE(reader.isValid());
    EXPECT_TRUE(taken(reader).image.isNull());
}

TEST(AnimationReader, ADamagedFrameIsNullAndItsFileBeginsAnew) {
    QFile whole(recording);
    ASSERT_TRUE(whole.open(QFile::ReadOnly));
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("short.gif"));
    QFile file(name);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(whole.read(400));
    file.close();
    AnimationReader reader(name);
    EXPECT_TRUE(reader.isValid());
    EXPECT_TRUE(taken(reader).image.isNull());
    EXPECT_TRUE(taken(reader).image.isNull());
}

TEST(AnimationReader, MayGoWhileAFrameIsRead) {
    QFuture<AnimationFrame> frame;
    {
        AnimationReader reader(recording);
        frame = reader.next();
    }
    EXPECT_FALSE(frame.result().image.isNull());
}

}  // namespace

}  // namespace velmora::test
