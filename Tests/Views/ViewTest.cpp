// SPDX-License-Identifier: MIT
#include "Tests/Views/ViewTest.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTest>

namespace velmora::test {

namespace {

double pixelsPerPoint() {
    return qGuiApp->devicePixelRatio();
}

void collect(QQuickItem& root, const QString& name, QList<QQuickItem*>& found) {
    for (QQuickItem* child : root.childItems()) {
        if (child->objectName() == name) {
            found.append(child);
        }
        collect(*child, name, found);
    }
}

}  // namespace

ViewTest::ViewTest()
    : screens({{1,
                {0, 0, 1600 * pixelsPerPoint(), 1000 * pixelsPerPoint()},
                pixelsPerPoint(),
                {0, 0, 1600 * pixelsPerPoint(), 1000 * pixelsPerPoint()}}}) {}

void ViewTest::TearDown() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ViewTest::showEntry(const LookupResult& result, double fontScale, bool toneColorsEnabled) {
    popover.show({result}, std::nullopt, anchor, toneColorsEnabled, fontScale);
}

void ViewTest::showSelection(const std::vector<LookupResult>& results, const std::string& text,
                             double fontScale) {
    popover.show(results, text, anchor, true, fontScale);
}

QQuickItem& ViewTest::item(const QString& name) {
    const QList<QQuickItem*> found = items(view(), name);
    if (found.isEmpty()) {
        ADD_FAILURE() << "no item is named " << name.toStdString();
        return view();
    }
    return *found.front();
}

QList<QQuickItem*> ViewTest::items(QQuickItem& root, const QString& name) {
    QList<QQuickItem*> found;
    collect(root, name, found);
    std::stable_sort(found.begin(), found.end(), [](QQuickItem* a, QQuickItem* b) {
        return a->mapToScene({}).y() < b->mapToScene({}).y();
    });
    return found;
}

QRectF ViewTest::frame(QQuickItem& item) {
    return item.mapRectToItem(&view(), QRectF(0, 0, item.width(), item.height()));
}

void ViewTest::click(QQuickItem& item) {
    const QPointF position = item.mapToScene({item.width() / 2, item.height() / 2});
    QTest::mouseClick(&panel(), Qt::LeftButton, Qt::NoModifier, position.toPoint());
}

QImage ViewTest::picture() {
    // Windows without a display are never translucent; this colour stands for what lies below.
    panel().setColor(QColor(0x8a, 0x9b, 0xae));
    return panel().grabWindow().convertToFormat(QImage::Format_RGB32);
}

}  // namespace velmora::test
