// SPDX-License-Identifier: MIT
#include "Tests/Contracts/Tray/EmbeddedStage.h"

namespace velmora::testing {
namespace {

/// What the user reads: one ampersand marks a key and is not shown, two are one.
QString text(const QAction& action) {
    QString shown;
    bool marked = false;
    for (const QChar letter : action.text()) {
        const bool isMark = letter == QLatin1Char('&') && !marked;
        if (!isMark) {
            shown += letter;
        }
        marked = isMark;
    }
    return shown;
}

void collect(const QMenu& menu, const std::string& indent, std::vector<std::string>& titles) {
    for (const QAction* const action : menu.actions()) {
        std::string title = action->isSeparator() ? "-" : text(*action).toStdString();
        if (action->isChecked()) {
            title.insert(0, "✓");
        }
        if (!action->isEnabled() && !action->isSeparator()) {
            title = "(" + title + ")";
        }
        titles.push_back(indent + title);
        if (action->menu() != nullptr) {
            collect(*action->menu(), indent + "  ", titles);
        }
    }
}

}  // namespace

QMenu* EmbeddedStage::menu() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const menu = qobject_cast<QMenu*>(widget);
        if (menu != nullptr && menu->isVisible() && menu->parentWidget() == nullptr &&
            menu->windowHandle()->isExposed()) {
            return menu;
        }
    }
    return nullptr;
}

QLabel* EmbeddedStage::toolTip() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        auto* const label = qobject_cast<QLabel*>(widget);
        if (label != nullptr && label->isVisible() && label->windowHandle()->isExposed()) {
            return label;
        }
    }
    return nullptr;
}

void EmbeddedStage::pointAtIcon() {
    ASSERT_TRUE(isInTray());
    server().movePointer(TestTray::left + TestTray::side / 2, options.top + TestTray::side / 2);
}

void EmbeddedStage::clickIcon(int button) {
    pointAtIcon();
    server().press(button);
    server().release(button);
}

void EmbeddedStage::type(unsigned keysym) {
    waitUntil([] { return menu() != nullptr; });
    server().keyDown(keysym);
    server().keyUp(keysym);
}

void EmbeddedStage::click(const QPoint& point) {
    server().movePointer(point.x(), point.y());
    server().press(1);
    server().release(1);
}

QAction* EmbeddedStage::find(const QMenu& menu, const QString& wanted) {
    for (QAction* const action : menu.actions()) {
        if (text(*action) == wanted) {
            return action;
        }
    }
    return nullptr;
}

bool EmbeddedStage::choose(const std::string& title) {
    if (!waitUntil([] { return menu() != nullptr; })) {
        return false;
    }
    const QString wanted = QString::fromStdString(title);
    const auto middle = [](const QMenu& of, QAction* action) {
        return of.mapToGlobal(of.actionGeometry(action).center());
    };
    if (QAction* const action = find(*menu(), wanted)) {
        const bool offered = action->isEnabled();
        click(middle(*menu(), action));
        return offered;
    }
    for (QAction* const action : menu()->actions()) {
        QMenu* const submenu = action->menu();
        QAction* const inside = submenu != nullptr ? find(*submenu, wanted) : nullptr;
        if (inside != nullptr) {
            click(middle(*menu(), action));
            const bool opened = waitUntil(
                [&] { return submenu->isVisible() && submenu->windowHandle()->isExposed(); });
            click(middle(*submenu, inside));
            return opened;
        }
    }
    return false;
}

std::vector<std::string> EmbeddedStage::shown() {
    std::vector<std::string> titles;
    if (const QMenu* const open = menu()) {
        collect(*open, "", titles);
    }
    return titles;
}

}  // namespace velmora::testing
