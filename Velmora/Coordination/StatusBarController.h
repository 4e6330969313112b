// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Coordination/SettingsPresenting.h"
#include "Velmora/Coordination/StatusBarPresenting.h"
#include "Velmora/Platform/ApplicationShell.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/EventMonitor.h"
#include "Velmora/Platform/StatusIconPixmap.h"
#include "Velmora/Platform/StatusItem.h"

namespace velmora {

/// The program's tray menu, made anew from the model whenever it opens. While it is open nothing is
/// looked up. Main thread.
class StatusBarController final : public StatusBarPresenting, public StatusItemDelegate {
  public:
    /// What the controller works with. Each outlives it.
    struct Services {
        StatusItem& item;
        SettingsPresenting& settings;
        ApplicationShell& shell;
        EventMonitor& events;
        Clock& clock;
    };

    explicit StatusBarController(const Services& services);
    StatusBarController(const StatusBarController&) = delete;
    StatusBarController& operator=(const StatusBarController&) = delete;
    ~StatusBarController() override;

    void attach(AppModel& model) override;

    std::vector<MenuItem> menuNeedsUpdate() override;
    void menuWillOpen() override;
    void menuDidClose() override;

    /// The entries for the model's present state; none once the model is gone.
    std::vector<MenuItem> rebuildMenu();

    /// The program's character in white on nothing, 18 × 18 points, at the scales of usual trays.
    /// Needs the toolkit's fonts. It stays the same whether hovering is on or off.
    static std::vector<StatusIconPixmap> makeStatusIcon();

    // What the entries do. Each does nothing once the model is gone.
    void toggleHoverLookup();
    void copyLookupDiagnostics();
    void speakRecentLookup(const DictionaryEntry& entry);
    void showOnboarding();
    void showSettings();
    void showAvailableUpdate();
    void checkForUpdates();
    void quit();

  private:
    MenuItem hoverLookupItem();
    MenuItem recentItem();
    void watchModel();
    void menuMayHaveChanged();
    void watchPresses();
    void endWatchingPresses();
    void pressed();

    Services services_;
    QPointer<AppModel> model_;
    std::unique_ptr<QObject> watching_;  // While the menu is open.
    bool isChangePending_ = false;
    std::array<EventMonitor::Token, 2> pressMonitors_{};
    double openedAt_ = 0;  // In seconds of uptime.
};

}  // namespace velmora
