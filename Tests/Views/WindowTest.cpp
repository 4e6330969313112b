// SPDX-License-Identifier: MIT
#include "Tests/Views/WindowTest.h"

#include <QTest>

namespace velmora::test {

namespace {

using ColorScheme = DesktopAppearance::ColorScheme;

/// Long enough for every animation of a control to end.
constexpr int settlingMilliseconds = 400;

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

void WindowTest::compare(QQuickWindow& window, const std::string& name) {
    const int ratio = static_cast<int>(window.devicePixelRatio());
    const std::string suffix = ratio == 1 ? "" : "@" + std::to_string(ratio) + "x";
    for (const auto& [scheme, scheme_name] :
         {std::pair(ColorScheme::light, "light"), std::pair(ColorScheme::dark, "dark")}) {
        appearance.set(scheme);
        if (window.color().alpha() == 0) {
            window.setColor(QColor(0x8a, 0x9b, 0xae));  // Stands for what lies below.
        }
        QTest::qWait(settlingMilliseconds);
        EXPECT_TRUE(matchesApproved(window.grabWindow().convertToFormat(QImage::Format_RGB32),
                                    name + "-" + scheme_name + suffix));
        if (window.flags().testFlag(Qt::FramelessWindowHint)) {
            window.setColor(Qt::transparent);
        }
    }
}

}  // namespace velmora::test
