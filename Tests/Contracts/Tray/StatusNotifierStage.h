// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>

#include "Tests/Contracts/StatusNotifier/TrayHost.h"
#include "Tests/Contracts/StatusNotifier/TrayWatcher.h"
#include "Tests/Contracts/Tray/MenuMirror.h"
#include "Tests/Support/Contracts/StatusItemStage.h"
#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierItem.h"
#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora::testing {

/// A session bus with a watcher of tray items and a host that shows one.
class StatusNotifierStage final : public StatusItemStage {
  public:
    StatusItem& item() override { return item_; }

    void startTray() override {
        watcher_.emplace();
        ASSERT_TRUE(watcher_->appear());
    }
    void loseTray() override {
        mirror_.reset();
        host_.reset();
        watcher_.reset();
    }
    bool isInTray() override {
        if (!watcher_ || watcher_->registered.isEmpty()) {
            return false;
        }
        if (!host_) {
            const QString name = QStringLiteral("host");
            host_.emplace(name, watcher_->registered.constLast());
            mirror_.emplace(*host_, name, watcher_->registered.constLast());
        }
        return host_->itemProperty("Title").toString() == QStringLiteral("Velmora");
    }

    void openMenu() override {
        ASSERT_TRUE(isInTray());
        host_->aboutToShow();
        mirror_->read();
        host_->event(0, "opened");
    }
    void closeMenu() override { host_->event(0, "closed"); }
    bool choose(const std::string& title) override {
        const QString label =
            QString::fromStdString(title).replace(QLatin1Char('_'), QStringLiteral("__"));
        const BusMenuNode* const found = TrayHost::find(mirror_->root(), label);
        if (found == nullptr) {
            return false;
        }
        host_->event(found->id, "clicked");
        return host_->lastEvent.type() == QDBusMessage::ReplyMessage;
    }
    std::vector<std::string> shown() override { return mirror_->titles(); }

  private:
    ManualClock clock_;
    StatusNotifierItem item_{clock_};
    std::optional<TrayWatcher> watcher_;
    std::optional<TrayHost> host_;
    std::optional<MenuMirror> mirror_;
};

}  // namespace velmora::testing
