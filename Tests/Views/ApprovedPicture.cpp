// SPDX-License-Identifier: MIT
#include "Tests/Views/ApprovedPicture.h"

#include <QColor>
#include <QDir>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <utility>

namespace velmora::test {

namespace {

constexpr int tolerance = 16;
constexpr double toleratedShare = 0.001;

/// A letter that is another one is few pixels, but they stand together: of a square of this side so
/// many may differ.
constexpr int blockSide = 16;
constexpr int toleratedOfBlock = 10;

bool differs(QRgb a, QRgb b) {
    return std::abs(qRed(a) - qRed(b)) > tolerance || std::abs(qGreen(a) - qGreen(b)) > tolerance ||
           std::abs(qBlue(a) - qBlue(b)) > tolerance;
}

struct Differences {
    int count = 0;
    int mostInBlock = 0;
};

/// The approved picture paled, with every differing pixel in red; returns how many there are.
Differences markDifferences(const QImage& actual, const QImage& approved, QImage& marked) {
    marked = approved.copy();
    Differences found;
    std::map<std::pair<int, int>, int> blocks;
    for (int y = 0; y < approved.height(); ++y) {
        for (int x = 0; x < approved.width(); ++x) {
            const QColor pale = QColor(approved.pixel(x, y)).lighter(130);
            const bool different = differs(actual.pixel(x, y), approved.pixel(x, y));
            marked.setPixelColor(x, y, different ? QColor(Qt::red) : pale);
            if (different) {
                ++found.count;
                const int inBlock = ++blocks[{x / blockSide, y / blockSide}];
                found.mostInBlock = std::max(found.mostInBlock, inBlock);
            }
        }
    }
    return found;
}

QString leave(const QImage& image, const std::string& name, const char* suffix) {
    const QDir folder(QStringLiteral(VELMORA_VIEW_RESULTS));
    folder.mkpath(QStringLiteral("."));
    const QString file = folder.filePath(QString::fromStdString(name + suffix));
    image.save(file);
    return file;
}

}  // namespace

testing::AssertionResult matchesApproved(const QImage& actual, const std::string& name) {
    const QDir folder(QStringLiteral(VELMORA_VIEW_TESTS "/Approved"));
    const QString file = folder.filePath(QString::fromStdString(name + ".png"));
    if (qEnvironmentVariable("VELMORA_APPROVE") == QStringLiteral("1")) {
        folder.mkpath(QStringLiteral("."));
        return actual.save(file)
                   ? ::testing::AssertionSuccess()
                   : ::testing::AssertionFailure() << "cannot write " << file.toStdString();
    }
    const QImage approved = QImage(file).convertToFormat(QImage::Format_RGB32);
    if (approved.isNull()) {
        return ::testing::AssertionFailure() << "no approved picture; this one is in "
                                             << leave(actual, name, ".actual.png").toStdString();
    }
    if (approved.size() != actual.size()) {
        return ::testing::AssertionFailure()
               << actual.width() << "x" << actual.height() << " instead of " << approved.width()
               << "x" << approved.height() << ", see "
               << leave(actual, name, ".actual.png").toStdString();
    }
    QImage marked;
    const Differences found = markDifferences(actual, approved, marked);
    if (found.count > toleratedShare * actual.width() * actual.height() ||
        found.mostInBlock > toleratedOfBlock) {
        leave(actual, name, ".actual.png");
        return ::testing::AssertionFailure()
               << found.count << " pixels differ, see "
               << leave(marked, name, ".difference.png").toStdString();
    }
    return ::testing::AssertionSuccess();
}

}  // namespace velmora::test
