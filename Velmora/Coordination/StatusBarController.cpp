// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/StatusBarController.h"

#include <utility>

namespace velmora {

namespace {

// The press that opened the menu may reach us after the news of the menu.
constexpr double secondsOfOpeningPress = 0.2;

std::string recentTitle(const DictionaryEntry& entry) {
    return entry.simplified + "  " + entry.pinyinMarked;
}

}  // namespace

StatusBarController::StatusBarController(const Services& services) : services_(services) {}

StatusBarController::~StatusBarController() {
    endWatchingPresses();
    services_.item.hide();
}

void StatusBarController::attach(AppModel& model) {
    model_ = &model;
    services_.item.show(
        {.toolTip = "Velmora", .accessibilityLabel = "Velmora", .icon = makeStatusIcon()}, *this);
}

std::vector<MenuItem> StatusBarController::menuNeedsUpdate() {
    if (model_) {
        model_->refreshPermissions();
    }
    return rebuildMenu();
}

void StatusBarController::menuWillOpen() {
    if (model_) {
        model_->setStatusMenuOpen(true);
    }
    openedAt_ = services_.clock.uptime();
    watchPresses();
    watchModel();
}

void StatusBarController::menuDidClose() {
    endWatchingPresses();
    watching_.reset();
    if (model_) {
        model_->setStatusMenuOpen(false);
    }
}

std::vector<MenuItem> StatusBarController::rebuildMenu() {
    if (!model_) {
        return {};
    }
    const AppModel& model = *model_;
    const PermissionCenter& permissions = model_->permissions();
    std::vector<MenuItem> menu;
    menu.push_back(hoverLookupItem());
    menu.push_back(MenuItem::note("Live: " + model.hoverStatus()));
    menu.push_back(MenuItem::note("Last hover: " + model.lastHoverStatus()));
    menu.push_back(MenuItem::separator());
    menu.push_back(
        MenuItem::command("Copy Lookup Diagnostics", [this] { copyLookupDiagnostics(); }));
    if (!model.recentLookups().empty()) {
        menu.push_back(recentItem());
    }
    menu.push_back(MenuItem::separator());
    menu.push_back(MenuItem::note(permissions.accessibilityGranted() ? "Accessibility granted"
                                                                     : "Accessibility needed"));
    menu.push_back(MenuItem::note(permissions.screenRecordingGranted()
                                      ? "Screen Recording granted"
                                      : "Screen Recording needed for OCR"));
    menu.push_back(MenuItem::separator());
    menu.push_back(MenuItem::command("Onboarding", [this] { showOnboarding(); }));
    menu.push_back(MenuItem::command("Settings", [this] { showSettings(); }));
    if (const auto& version = model.updateAvailableVersion()) {
        menu.push_back(MenuItem::command("Update Available: " + *version + "...",
                                         [this] { showAvailableUpdate(); }));
    }
    menu.push_back(MenuItem::command("Check for Updates...", [this] { checkForUpdates(); }));
    menu.push_back(MenuItem::command("Quit Velmora", [this] { quit(); }));
    return menu;
}

MenuItem StatusBarController::hoverLookupItem() {
    MenuItem item = MenuItem::command("Hover lookup", [this] { toggleHoverLookup(); });
    item.checkable = true;
    item.checked = model_->hoverLookupEnabled();
    return item;
}

MenuItem StatusBarController::recentItem() {
    MenuItem recent;
    recent.title = "Recent";
    for (const LookupResult& result : model_->recentLookups()) {
        recent.children.push_back(MenuItem::command(
            recentTitle(result.entry), [this, entry = result.entry] { speakRecentLookup(entry); }));
    }
    return recent;
}

void StatusBarController::toggleHoverLookup() {
    if (model_) {
        model_->setHoverLookupEnabled(!model_->hoverLookupEnabled());
    }
}

void StatusBarController::copyLookupDiagnostics() {
    if (model_) {
        model_->copyLookupDiagnostics();
    }
}

void StatusBarController::speakRecentLookup(const DictionaryEntry& entry) {
    if (model_) {
        model_->speechService().speak(entry.simplified);
    }
}

void StatusBarController::showOnboarding() {
    if (model_) {
        model_->presentOnboarding(false);
    }
}

void StatusBarController::showSettings() {
    if (model_) {
        services_.settings.showSettings();
    }
}

void StatusBarController::showAvailableUpdate() {
    checkForUpdates();
}

void StatusBarController::checkForUpdates() {
    if (model_) {
        model_->softwareUpdates().checkForUpdates();
    }
}

void StatusBarController::quit() {
    services_.shell.terminate();
}

void StatusBarController::watchModel() {
    watching_ = std::make_unique<QObject>();
    isChangePending_ = false;
    if (!model_) {
        return;
    }
    const auto watch = [this](const auto* sender, auto signal) {
        QObject::connect(sender, signal, watching_.get(), [this] { menuMayHaveChanged(); });
    };
    const AppModel* const model = model_;
    watch(model, &AppModel::hoverLookupEnabledChanged);
    watch(model, &AppModel::hoverStatusChanged);
    watch(model, &AppModel::lastHoverStatusChanged);
    watch(model, &AppModel::recentLookupsChanged);
    watch(model, &AppModel::updateAvailableVersionChanged);
    const PermissionCenter* const permissions = &model_->permissions();
    watch(permissions, &PermissionCenter::accessibilityGrantedChanged);
    watch(permissions, &PermissionCenter::screenRecordingGrantedChanged);
}

void StatusBarController::menuMayHaveChanged() {
    if (std::exchange(isChangePending_, true)) {
        return;
    }
    // Once for all that changes together, and never from the making of the menu itself, which asks
    // for the grants.
    QMetaObject::invokeMethod(
        watching_.get(),
        [this] {
            isChangePending_ = false;
            services_.item.menuChanged();
        },
        Qt::QueuedConnection);
}

void StatusBarController::watchPresses() {
    endWatchingPresses();
    const auto handler = [this](ModifierFlags) { pressed(); };
    pressMonitors_ = {services_.events.addGlobalMonitor(EventMask::anyMouseDown, handler),
                      services_.events.addLocalMonitor(EventMask::anyMouseDown, handler)};
}

void StatusBarController::endWatchingPresses() {
    for (EventMonitor::Token& token : pressMonitors_) {
        if (const auto ended = std::exchange(token, 0); ended != 0) {
            services_.events.removeMonitor(ended);
        }
    }
}

void StatusBarController::pressed() {
    if (services_.clock.uptime() - openedAt_ >= secondsOfOpeningPress) {
        services_.item.mousePressedSomewhere();
    }
}

}  // namespace velmora
