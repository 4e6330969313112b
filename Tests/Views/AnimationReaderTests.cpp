// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/AnimationReader.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QThreadPool>
#include <vector>

namespace velmora::test {

namespace {

const QString recording = QStringLiteral(":/animations/onboarding-demo.gif");

AnimationFrame taken(AnimationReader& reader) {
    return reader.next().result();
}

/// How many frames there are until the first two come again. Recordings end as they begin, so that
/// the second one tells where they begin anew. 0 where a frame is missing or they never come.
int framesUntilAnew(AnimationReader& reader) {
    constexpr int mostFrames = 10000;
    const AnimationFrame first = taken(reader);
    const AnimationFrame second = taken(reader);
    AnimationFrame before = second;
    for (int frames = 2; frames < mostFrames; ++frames) {
        const AnimationFrame frame = taken(reader);
        if (frame.image.isNull()) {
            return 0;
        }
        if (before.image == first.image && frame.image == second.image) {
            return frames - 1;
        }
        before = frame;
    }
    return 0;
}

TEST(AnimationReader, ReadsEveryFrameAndBeginsAnewBehindTheLast) {
    AnimationReader reader(recording);
    ASSERT_TRUE(reader.isValid());
    const AnimationFrame first = taken(reader);
    ASSERT_EQ(first.image.size(), QSize(1040, 606));
    EXPECT_GT(first.delay.count(), 0);
    EXPECT_NE(taken(reader).image, first.image);
    AnimationReader another(recording);
    EXPECT_GT(framesUntilAnew(another), 30);
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

/// The name of a file that holds so much of the beginning of the recording, and other bytes behind.
QString damaged(const QTemporaryDir& folder, qint64 part, qint64 of, const QByteArray& rest = {}) {
    QFile whole(recording);
    QFile file(folder.filePath(QStringLiteral("damaged.gif")));
    EXPECT_TRUE(whole.open(QFile::ReadOnly));
    EXPECT_TRUE(file.open(QFile::WriteOnly));
    file.write(whole.read(whole.size() * part / of));
    file.write(rest);
    return file.fileName();
}

TEST(AnimationReader, AFileThatEndsEarlyBeginsAnew) {
    const QTemporaryDir folder;
    AnimationReader part(damaged(folder, 1, 2));
    AnimationReader whole(recording);
    EXPECT_TRUE(part.isValid());
    const int frames = framesUntilAnew(part);
    EXPECT_GT(frames, 10);
    EXPECT_LT(frames, framesUntilAnew(whole));
}

TEST(AnimationReader, FromADamagedFrameOnThereIsNone) {
    const QTemporaryDir folder;
    AnimationReader reader(damaged(folder, 1, 2, QByteArray(100000, '\xff')));
    constexpr int mostFrames = 10000;
    int frames = 0;
    while (frames < mostFrames && !taken(reader).image.isNull()) {
        ++frames;
    }
    EXPECT_GT(frames, 1);
    ASSERT_LT(frames, mostFrames);
    for (int more = 0; more < 2 * frames; ++more) {
        EXPECT_TRUE(taken(reader).image.isNull()) << more;
    }
}

TEST(AnimationReader, AFileWithoutAWholeFrameHasNone) {
    const QTemporaryDir folder;
    AnimationReader reader(damaged(folder, 1, 1000));
    EXPECT_TRUE(reader.isValid());
    EXPECT_TRUE(taken(reader).image.isNull());
    EXPECT_TRUE(taken(reader).image.isNull());
}

TEST(AnimationReader, MayGoBeforeAFrameIsRead) {
    QThreadPool& pool = *QThreadPool::globalInstance();
    const int threads = pool.maxThreadCount();
    pool.setMaxThreadCount(1);
    QSemaphore gone;
    pool.start([&gone] { gone.acquire(); });
    QFuture<AnimationFrame> frame;
    {
        AnimationReader reader(recording);
        frame = reader.next();
    }
    gone.release();
    EXPECT_FALSE(frame.result().image.isNull());
    pool.setMaxThreadCount(threads);
}

}  // namespace

}  // namespace velmora::test
