// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/AppModel.h"

#include <QPointer>
#include <QVariantMap>
#include <cmath>

namespace velmora {

namespace {

constexpr const char* hoverLookupEnabledKey = "hoverLookupEnabled";
constexpr const char* onboardingCompletedKey = "onboardingCompleted";
constexpr const char* popoverFontScaleKey = "popoverFontScale";

}  // namespace

AppModel::AppModel(const AppModelServices& services)
    : services_(services),
      permissions_(services.permissions, services.clock, services.analytics),
      hoverMonitor_(services.events, services.clock, services.mainQueue),
      onboarding_(services.onboarding, services.shell,
                  [this](bool closeWindow) { finishOnboarding(closeWindow); }) {
    readSettings();
    services_.analytics.configure();
    wireHoverMonitor();
    wireServices();
    services_.statusBar.attach(*this);
    updateHoverMonitor(true);
    reportAppOpened();
    scheduleFirstWindow();
}

AppModel::~AppModel() = default;

void AppModel::readSettings() {
    onboardingCompleted_ = services_.settings.boolean(onboardingCompletedKey).value_or(false);
    hoverLookupEnabled_ = services_.settings.boolean(hoverLookupEnabledKey).value_or(false);
    const double scale = services_.settings.number(popoverFontScaleKey).value_or(0);
    popoverFontScale_ = scale > 0 && std::isfinite(scale) ? scale : 1.0;
}

void AppModel::wireHoverMonitor() {
    hoverMonitor_.dwellDelay = dwellDelay_;
    const QPointer<AppModel> weak(this);
    hoverMonitor_.onMouseMoved = [weak](Point point) {
        if (weak) {
            weak->handleMouseMoved(point);
        }
    };
    hoverMonitor_.onMouseDown = [weak](Point point) {
        if (weak) {
            weak->handleMouseDown(point);
        }
    };
    hoverMonitor_.onDwell = [weak](Point point, ModifierFlags flags) {
        if (weak) {
            weak->handleDwell(point, flags);
        }
    };
    hoverMonitor_.onModifierFlagsChanged = [weak](ModifierFlags flags) {
        if (weak) {
            weak->handleModifierFlagsChanged(flags);
        }
    };
}

void AppModel::wireServices() {
    connect(&permissions_, &PermissionCenter::accessibilityGrantedChanged, this,
            [this] { updateHoverMonitor(false); });
    const QPointer<AppModel> weak(this);
    services_.softwareUpdates.observeAvailableUpdateVersion(
        [weak](const std::optional<std::string>& version) {
            if (weak && weak->updateAvailableVersion_ != version) {
                weak->updateAvailableVersion_ = version;
                emit weak->updateAvailableVersionChanged();
            }
        });
}

void AppModel::reportAppOpened() {
    services_.analytics.capture(
        AnalyticsEvent::appOpened,
        {{"accessibility_granted", permissions_.accessibilityGranted()},
         {"hover_lookup_enabled", hoverLookupEnabled_},
         {"onboarding_completed", onboardingCompleted_},
         {"screen_recording_granted", permissions_.screenRecordingGranted()}});
}

void AppModel::scheduleFirstWindow() {
    services_.mainQueue.post([weak = QPointer<AppModel>(this)] {
        if (!weak) {
            return;
        }
        if (!weak->onboardingCompleted_) {
            weak->presentOnboarding(true);
            return;
        }
        weak->services_.shell.setActivationPolicy(ApplicationShell::ActivationPolicy::accessory);
        weak->services_.launchFlash.flash();
    });
}

void AppModel::updateHoverMonitor(bool refreshPermissions) {
    if (!hoverLookupEnabled_) {
        setHoverStatus("Hover lookup off");
        hoverMonitor_.stop();
        hideOverlays();
        return;
    }
    if (refreshPermissions) {
        permissions_.recheck();
    }
    if (permissions_.accessibilityGranted()) {
        setHoverStatus("Hover lookup ready");
        hoverMonitor_.start();
    } else {
        setHoverStatus("Accessibility permission needed");
        hoverMonitor_.stop();
        hideOverlays();
    }
}

void AppModel::refreshPermissions() {
    permissions_.recheck();
    updateHoverMonitor(false);
}

void AppModel::setHoverLookupEnabled(bool enabled) {
    const bool changed = enabled != hoverLookupEnabled_;
    hoverLookupEnabled_ = enabled;
    services_.settings.setBoolean(hoverLookupEnabledKey, enabled);
    updateHoverMonitor(true);
    services_.analytics.capture(AnalyticsEvent::hoverLookupEnabledChanged, {{"enabled", enabled}});
    if (changed) {
        emit hoverLookupEnabledChanged(enabled);
    }
}

void AppModel::setAnalyticsEnabled(bool enabled) {
    const bool before = services_.analytics.isEnabled();
    services_.analytics.setEnabled(enabled);
    if (services_.analytics.isEnabled() != before) {
        emit analyticsEnabledChanged(enabled);
    }
}

void AppModel::setDwellDelay(double seconds) {
    if (!std::isfinite(seconds) || seconds < 0) {
        return;
    }
    const bool changed = seconds != dwellDelay_;
    dwellDelay_ = seconds;
    hoverMonitor_.dwellDelay = seconds;
    if (changed) {
        emit dwellDelayChanged(seconds);
    }
}

void AppModel::setPopoverFontScale(double scale) {
    if (!std::isfinite(scale)) {
        return;
    }
    const bool changed = scale != popoverFontScale_;
    popoverFontScale_ = scale;
    services_.settings.setNumber(popoverFontScaleKey, scale);
    if (changed) {
        emit popoverFontScaleChanged(scale);
    }
}

void AppModel::setToneColorsEnabled(bool enabled) {
    if (enabled != toneColorsEnabled_) {
        toneColorsEnabled_ = enabled;
        emit toneColorsEnabledChanged(enabled);
    }
}

void AppModel::setAutoPronounce(bool enabled) {
    if (enabled != autoPronounce_) {
        autoPronounce_ = enabled;
        emit autoPronounceChanged(enabled);
    }
}

void AppModel::setPreferredScript(ChineseScript script) {
    if (script != preferredScript_) {
        preferredScript_ = script;
        emit preferredScriptChanged();
    }
}

QString AppModel::preferredScriptText() const {
    const std::string_view text = rawValue(preferredScript_);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void AppModel::setPreferredScriptText(const QString& text) {
    if (const auto script = chineseScriptFromRawValue(text.toStdString())) {
        setPreferredScript(*script);
    }
}

QVariantList AppModel::recentLookupsList() const {
    QVariantList list;
    for (const LookupResult& result : recentLookups_.all()) {
        list.append(QVariantMap{
            {QStringLiteral("simplified"), QString::fromStdString(result.entry.simplified)},
            {QStringLiteral("pinyinMarked"), QString::fromStdString(result.entry.pinyinMarked)},
            {QStringLiteral("matchedText"), QString::fromStdString(result.matchedText)}});
    }
    return list;
}

QString AppModel::updateAvailableVersionText() const {
    return QString::fromStdString(updateAvailableVersion_.value_or(std::string()));
}

void AppModel::setHoverStatus(std::string_view text) {
    if (hoverStatus_ != text) {
        hoverStatus_ = text;
        emit hoverStatusChanged();
    }
}

void AppModel::setBothStatuses(std::string_view text) {
    setHoverStatus(text);
    if (lastHoverStatus_ != text) {
        lastHoverStatus_ = text;
        emit lastHoverStatusChanged();
    }
}

void AppModel::presentOnboarding(bool isFirstLaunch) {
    onboarding_.present(isFirstLaunch);
}

void AppModel::finishOnboarding(bool closeWindow) {
    const bool completedBefore = onboardingCompleted_;
    onboardingCompleted_ = true;
    services_.settings.setBoolean(onboardingCompletedKey, true);
    if (!completedBefore) {
        services_.analytics.capture(
            AnalyticsEvent::onboardingCompleted,
            {{"accessibility_granted", permissions_.accessibilityGranted()},
             {"screen_recording_granted", permissions_.screenRecordingGranted()}});
        emit onboardingCompletedChanged(true);
    }
    onboarding_.finish(closeWindow);
}

std::string AppModel::lookupDiagnostics() const {
    const auto text = [](bool value) { return value ? "true" : "false"; };
    return std::string("Velmora lookup diagnostics\nHover lookup enabled: ") +
           text(hoverLookupEnabled_) +
           "\nAccessibility granted: " + text(permissions_.accessibilityGranted()) +
           "\nScreen Recording granted: " + text(permissions_.screenRecordingGranted()) +
           "\nLive status: " + hoverStatus_ + "\nLast hover: " + lastHoverStatus_;
}

void AppModel::copyLookupDiagnostics() {
    services_.pasteboard.setText(lookupDiagnostics());
}

}  // namespace velmora
