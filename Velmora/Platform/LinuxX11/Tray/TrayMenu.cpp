// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/Tray/TrayMenu.h"

#include <QAction>
#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "Velmora/Platform/LinuxX11/Tray/TrayLook.h"
#include "Velmora/Platform/LinuxX11/Tray/TrayMenuPlace.h"

namespace velmora {
namespace {

QString label(const std::string& title) {
    // One ampersand would mark a key of the keyboard.
    return QString::fromStdString(title).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

void show(QAction& action, const MenuItem& item) {
    action.setText(label(item.title));
    action.setEnabled(item.enabled);
    action.setCheckable(item.checkable);
    action.setChecked(item.checkable && item.checked);
}

/// Whether one list of entries can be shown by the lines of the other.
bool haveTheSameLines(const std::vector<MenuItem>& some, const std::vector<MenuItem>& others) {
    return std::ranges::equal(some, others, [](const MenuItem& one, const MenuItem& other) {
        return one.kind == other.kind && one.children == other.children;
    });
}

}  // namespace

TrayMenu::TrayMenu() = default;

TrayMenu::~TrayMenu() {
    closed_ = nullptr;
    if (menu_) {
        menu_->disconnect();
    }
}

void TrayMenu::open(const std::vector<MenuItem>& items, const QRect& icon,
                    std::optional<DesktopAppearance::ColorScheme> scheme,
                    std::function<void()> closed) {
    close();
    menu_ = std::make_unique<QMenu>();
    closed_ = std::move(closed);
    items_ = items;
    menu_->setStyle(trayStyle());
    menu_->setPalette(trayPalette(scheme));
    menu_->setAccessibleName(QStringLiteral("Velmora"));
    fill(*menu_, items_);
    connect(menu_.get(), &QMenu::aboutToHide, this, [this] { finish(); });
    menu_->popup(traymenu::place(traymenu::logical(icon), menu_->sizeHint()));
}

void TrayMenu::fill(QMenu& menu, const std::vector<MenuItem>& items) {
    for (std::size_t place = 0; place < items.size(); ++place) {
        const MenuItem& item = items[place];
        if (item.kind == MenuItem::Kind::separator) {
            menu.addSeparator();
            continue;
        }
        if (!item.children.empty()) {
            QMenu* const submenu = menu.addMenu(label(item.title));
            submenu->setStyle(menu.style());
            submenu->setPalette(menu.palette());
            fill(*submenu, item.children);
            continue;
        }
        QAction* const action = menu.addAction(label(item.title));
        show(*action, item);
        connect(action, &QAction::triggered, this, [this, act = item.action] { choose(act); });
    }
}

void TrayMenu::update(const std::vector<MenuItem>& items) {
    if (!menu_ || items == items_) {
        return;
    }
    if (!haveTheSameLines(items, items_)) {
        menu_->clear();
        fill(*menu_, items);
    } else {
        const QList<QAction*> actions = menu_->actions();
        for (std::size_t place = 0; place < items.size(); ++place) {
            const MenuItem& item = items[place];
            if (item.kind != MenuItem::Kind::separator && item.children.empty()) {
                show(*actions[static_cast<qsizetype>(place)], item);
            }
        }
    }
    items_ = items;
    menu_->adjustSize();
}

bool TrayMenu::isUnderPointer() const {
    const auto widgets = QApplication::topLevelWidgets();
    return std::ranges::any_of(widgets, [](const QWidget* widget) {
        return widget->isVisible() && qobject_cast<const QMenu*>(widget) != nullptr &&
               widget->geometry().contains(QCursor::pos());
    });
}

void TrayMenu::choose(const std::function<void()>& action) {
    finish();
    if (action) {
        // After the menu is gone: what follows may open a window.
        QMetaObject::invokeMethod(
            this, [action] { action(); }, Qt::QueuedConnection);
    }
}

void TrayMenu::close() {
    if (menu_) {
        menu_->close();
        finish();
    }
}

void TrayMenu::finish() {
    if (!menu_) {
        return;
    }
    // It may be in the middle of an event of its own.
    menu_->disconnect(this);
    menu_.release()->deleteLater();
    if (const auto closed = std::exchange(closed_, nullptr)) {
        closed();
    }
}

}  // namespace velmora
