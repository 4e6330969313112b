// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Velmora/Coordination/AppModelServices.h"
#include "Velmora/Coordination/HoverMonitor.h"
#include "Velmora/Coordination/LookupPresentation.h"
#include "Velmora/Coordination/OnboardingFlow.h"
#include "Velmora/Coordination/PermissionCenter.h"
#include "Velmora/Coordination/RecentLookups.h"
#include "VelmoraCore/ChineseScript.h"

namespace velmora {

/// The program's one observable state and the coordinator of every lookup: it holds the user's
/// settings, turns a dwell of the pointer into an extraction, a lookup, an outline and a popover,
/// and decides when they go away. Main thread; the only asynchronous step is the extraction. Points
/// and rectangles in screen space (origin at the bottom left corner of the primary screen, y
/// upwards, in points).
class AppModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool hoverLookupEnabled READ hoverLookupEnabled WRITE setHoverLookupEnabled NOTIFY
                   hoverLookupEnabledChanged)
    Q_PROPERTY(bool analyticsEnabled READ analyticsEnabled WRITE setAnalyticsEnabled NOTIFY
                   analyticsEnabledChanged)
    Q_PROPERTY(bool onboardingCompleted READ onboardingCompleted NOTIFY onboardingCompletedChanged)
    Q_PROPERTY(QString hoverStatus READ hoverStatusText NOTIFY hoverStatusChanged)
    Q_PROPERTY(QString lastHoverStatus READ lastHoverStatusText NOTIFY lastHoverStatusChanged)
    Q_PROPERTY(double dwellDelay READ dwellDelay WRITE setDwellDelay NOTIFY dwellDelayChanged)
    Q_PROPERTY(double popoverFontScale READ popoverFontScale WRITE setPopoverFontScale NOTIFY
                   popoverFontScaleChanged)
    Q_PROPERTY(bool toneColorsEnabled READ toneColorsEnabled WRITE setToneColorsEnabled NOTIFY
                   toneColorsEnabledChanged)
    Q_PROPERTY(
        bool autoPronounce READ autoPronounce WRITE setAutoPronounce NOTIFY autoPronounceChanged)
    /// "simplified" or "traditional"; any other text is ignored.
    Q_PROPERTY(QString preferredScript READ preferredScriptText WRITE setPreferredScriptText NOTIFY
                   preferredScriptChanged)
    /// Objects with `simplified`, `pinyinMarked` and `matchedText`, the newest first.
    Q_PROPERTY(QVariantList recentLookups READ recentLookupsList NOTIFY recentLookupsChanged)
    /// Empty where no newer version is known.
    Q_PROPERTY(QString updateAvailableVersion READ updateAvailableVersionText NOTIFY
                   updateAvailableVersionChanged)
    Q_PROPERTY(velmora::PermissionCenter* permissions READ permissionCenter CONSTANT)

  public:
    explicit AppModel(const AppModelServices& services);
    ~AppModel() override;

    bool hoverLookupEnabled() const { return hoverLookupEnabled_; }
    bool analyticsEnabled() const { return services_.analytics.isEnabled(); }
    bool onboardingCompleted() const { return onboardingCompleted_; }
    const std::string& hoverStatus() const { return hoverStatus_; }
    const std::string& lastHoverStatus() const { return lastHoverStatus_; }
    double dwellDelay() const { return dwellDelay_; }
    double popoverFontScale() const { return popoverFontScale_; }
    bool toneColorsEnabled() const { return toneColorsEnabled_; }
    bool autoPronounce() const { return autoPronounce_; }
    ChineseScript preferredScript() const { return preferredScript_; }
    const std::vector<LookupResult>& recentLookups() const { return recentLookups_.all(); }
    const std::optional<std::string>& updateAvailableVersion() const {
        return updateAvailableVersion_;
    }

    /// Stored at once; starts or ends watching the pointer.
    void setHoverLookupEnabled(bool enabled);
    void setAnalyticsEnabled(bool enabled);
    /// In seconds; not stored. What is not finite or below 0 is refused.
    void setDwellDelay(double seconds);
    /// 1.0 is the base size; stored at once. What is not finite is refused.
    void setPopoverFontScale(double scale);
    void setToneColorsEnabled(bool enabled);
    void setAutoPronounce(bool enabled);
    void setPreferredScript(ChineseScript script);

    PermissionCenter& permissions() { return permissions_; }
    Speaking& speechService() { return services_.speech; }
    SoftwareUpdating& softwareUpdates() { return services_.softwareUpdates; }

    /// What is on screen now.
    const std::optional<LookupPresentation>& currentLookupPresentation() const {
        return currentLookupPresentation_;
    }

    bool statusMenuOpen() const { return statusMenuOpen_; }
    /// While the tray menu is open nothing is looked up.
    void setStatusMenuOpen(bool open) { statusMenuOpen_ = open; }

    /// Reads both grants again and starts or ends watching the pointer accordingly.
    Q_INVOKABLE void refreshPermissions();

    Q_INVOKABLE void presentOnboarding(bool isFirstLaunch);
    Q_INVOKABLE void finishOnboarding(bool closeWindow);

    /// The state of hovering in a few lines, for a report of trouble.
    std::string lookupDiagnostics() const;
    /// Puts those lines on the clipboard.
    Q_INVOKABLE void copyLookupDiagnostics();

    // What the hover monitor tells, and the answer of an extraction.
    void handleDwell(Point point, ModifierFlags flags);
    void handleMouseMoved(Point point);
    void handleMouseDown(Point point);
    void handleModifierFlagsChanged(ModifierFlags flags);
    void present(const std::optional<TextProbe>& probe, Point point, ModifierFlags flags);

    /// Takes what is shown away and makes pending extractions stale.
    void dismissLookupPresentation();

  signals:
    void hoverLookupEnabledChanged(bool enabled);
    void analyticsEnabledChanged(bool enabled);
    void onboardingCompletedChanged(bool completed);
    void hoverStatusChanged();
    void lastHoverStatusChanged();
    void dwellDelayChanged(double seconds);
    void popoverFontScaleChanged(double scale);
    void toneColorsEnabledChanged(bool enabled);
    void autoPronounceChanged(bool enabled);
    void preferredScriptChanged();
    void recentLookupsChanged();
    void updateAvailableVersionChanged();

  private:
    // Accessors of the properties.
    PermissionCenter* permissionCenter() { return &permissions_; }
    QString hoverStatusText() const { return QString::fromStdString(hoverStatus_); }
    QString lastHoverStatusText() const { return QString::fromStdString(lastHoverStatus_); }
    QString preferredScriptText() const;
    void setPreferredScriptText(const QString& text);
    QVariantList recentLookupsList() const;
    QString updateAvailableVersionText() const;

    // Setting up.
    void readSettings();
    void wireHoverMonitor();
    void wireServices();
    void reportAppOpened();
    void scheduleFirstWindow();

    void updateHoverMonitor(bool refreshPermissions);

    // The lookup.
    bool isReadingPopover(Point point) const;
    /// Shows where the word stands, or nothing of it where nobody knows, and gives the anchor of
    /// what is shown above.
    Rect outline(const std::optional<Rect>& word, Point point);
    void presentHoveredText(const TextProbe& probe, Point point, bool shift);
    void presentSelectedText(const TextProbe& probe, Point point, bool shift);
    void presentMiss(std::string_view event, std::string_view status, std::string_view reason,
                     const TextProbe* probe, Point point);
    void present(const std::vector<LookupResult>& results,
                 const std::optional<std::string>& selectedText, const Rect& anchor,
                 bool autoPronounceSelection);
    void presentPinyin(const std::vector<LookupResult>& results,
                       const std::optional<std::string>& selectedText, const Rect& anchor);
    void trackLookupPresented(std::string_view mode, std::size_t resultCount, bool isSelection);
    void updateRecentLookups(const std::vector<LookupResult>& results);
    void hideOverlays();

    void setHoverStatus(std::string_view text);
    void setBothStatuses(std::string_view text);

    AppModelServices services_;
    PermissionCenter permissions_;
    HoverMonitor hoverMonitor_;
    OnboardingFlow onboarding_;

    bool hoverLookupEnabled_ = false;
    bool onboardingCompleted_ = false;
    std::string hoverStatus_ = "Hover lookup off";
    std::string lastHoverStatus_ = "No hover attempts yet";
    double dwellDelay_ = 0.25;
    double popoverFontScale_ = 1.0;
    bool toneColorsEnabled_ = true;
    bool autoPronounce_ = false;
    ChineseScript preferredScript_ = ChineseScript::simplified;
    RecentLookups recentLookups_;
    std::optional<std::string> updateAvailableVersion_;

    bool statusMenuOpen_ = false;
    /// Only the extraction that was given the latest value may present.
    std::uint64_t hoverGeneration_ = 0;
    std::optional<LookupPresentation> currentLookupPresentation_;
};

}  // namespace velmora
