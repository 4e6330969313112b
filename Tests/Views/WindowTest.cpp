// SPDX-License-Identifier: MIT
#include "Tests/Views/WindowTest.h"

#include <QTest>
#include <algorithm>

namespace velmora::test {

namespace {

using ColorScheme = DesktopAppearance::ColorScheme;

constexpr int patience = 60000;  // Milliseconds; machines that run tests may be slow.

bool isRunningAnimation(const QObject& object) {
    return object.inherits("QQuickAbstractAnimation") && object.property("running").toBool();
}

/// Whether something in an item is on its way to where it will stay.
bool isMoving(const QQuickItem& item) {
    const auto own = item.findChildren<QObject*>();
    const auto items = item.childItems();
    return std::any_of(own.begin(), own.end(),
                       [](const QObject* each) { return isRunningAnimation(*each); }) ||
           std::any_of(items.begin(), items.end(),
                       [](const QQuickItem* each) { return isMoving(*each); });
}

/// Whether a window is on the screen, with the keyboard where it takes that.
bool hasCome(const QQuickWindow& window) {
    return window.isExposed() &&
           (window.isActive() || window.flags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

}  // namespace

std::vector<std::string> WindowTest::texts(const QQuickItem& root) {
    std::vector<std::string> result;
    for (const QQuickItem* const child : root.childItems()) {
        const QByteArray type = child->metaObject()->className();
        if (!child->isVisible()) {
            continue;
        }
        if (type.startsWith("Label_") || type.startsWith("MonospacedDigits_")) {
            result.push_back(child->property("text").toString().toStdString());
        } else {
            const auto inside = texts(*child);
            result.insert(result.end(), inside.begin(), inside.end());
        }
    }
    return result;
}

void WindowTest::clickOn(QQuickItem& item) {
    clickAt(item, {item.width() / 2, item.height() / 2});
}

void WindowTest::clickAt(QQuickItem& item, QPointF position) {
    QTest::mouseClick(item.window(), Qt::LeftButton, Qt::NoModifier,
                      item.mapToScene(position).toPoint());
}

void WindowTest::press(QWindow& window, int key, Qt::KeyboardModifiers modifiers) {
    // Keys go to windows that are there, and ours come by and by.
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, static_cast<Qt::Key>(key), modifiers);
}

/// Nothing was moving when the picture was made, even if that began something.
QImage WindowTest::settledPicture(QQuickWindow& window) {
    QImage picture;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            if (!hasCome(window) || isMoving(*window.contentItem())) {
                return false;
            }
            picture = window.grabWindow().convertToFormat(QImage::Format_RGB32);
            return !isMoving(*window.contentItem());
        },
        patience));
    return picture;
}

void WindowTest::compare(QQuickWindow& window, const std::string& name) {
    const int ratio = static_cast<int>(window.devicePixelRatio());
    const std::string suffix = ratio == 1 ? "" : "@" + std::to_string(ratio) + "x";
    for (const auto& [scheme, scheme_name] :
         {std::pair(ColorScheme::light, "light"), std::pair(ColorScheme::dark, "dark")}) {
        appearance.set(scheme);
        if (window.color().alpha() == 0) {
            window.setColor(QColor(0x8a, 0x9b, 0xae));  // Stands for what lies below.
        }
        QCoreApplication::processEvents();  // What the test itself has begun.
        EXPECT_TRUE(matchesApproved(settledPicture(window), name + "-" + scheme_name + suffix));
        if (window.flags().testFlag(Qt::FramelessWindowHint)) {
            window.setColor(Qt::transparent);
        }
    }
}

}  // namespace velmora::test
