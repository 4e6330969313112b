// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Coordination/AppModelServices.h"

namespace velmora::testing {

/// What happened, in order.
using Journal = std::vector<std::string>;

/// A panel below (or, for pinyin, above) its anchor.
class RecordedPopover final : public PopoverPresenting {
  public:
    explicit RecordedPopover(Journal& journal) : journal_(journal) {}

    void showPinyin(const std::string& pinyin, const Rect& anchor, double fontScale) override {
        journal_.push_back("pinyin " + pinyin);
        scale = fontScale;
        lastAnchor = anchor;
        frame = Rect{anchor.midX() - 50, anchor.maxY() + 16, 100, 38};
    }
    void show(const std::vector<LookupResult>& results,
              const std::optional<std::string>& selectedText, const Rect& anchor,
              bool toneColorsEnabled, double fontScale) override {
        std::string line = selectedText ? "selection" : "dictionary";
        for (const LookupResult& result : results) {
            line += " " + result.matchedText;
        }
        journal_.push_back(line);
        toneColors = toneColorsEnabled;
        scale = fontScale;
        lastAnchor = anchor;
        frame = Rect{anchor.midX() - 180, anchor.minY() - 10 - 260, 360, 260};
    }
    std::optional<Rect> visiblePanelFrame() const override { return frame; }
    void orderOut() override {
        if (frame) {
            journal_.emplace_back("panel out");
        }
        frame.reset();
    }

    std::optional<Rect> frame;
    Rect lastAnchor;
    double scale = 0;
    bool toneColors = false;

  private:
    Journal& journal_;
};

class RecordedHighlight final : public HighlightPresenting {
  public:
    void show(const Rect& rect) override { shown = rect; }
    void orderOut() override { shown.reset(); }

    std::optional<Rect> shown;
};

class RecordedFlash final : public LaunchFlashPresenting {
  public:
    explicit RecordedFlash(Journal& journal) : journal_(journal) {}
    void flash() override { journal_.emplace_back("flash"); }

  private:
    Journal& journal_;
};

class RecordedOnboarding final : public OnboardingPresenting {
  public:
    explicit RecordedOnboarding(Journal& journal) : journal_(journal) {}
    void open(bool isFirstLaunch, const std::string& completionTitle,
              std::function<void()> complete, std::function<void()> closed) override {
        journal_.push_back(std::string("onboarding ") + (isFirstLaunch ? "first " : "again ") +
                           completionTitle);
        onComplete = std::move(complete);
        onClose = std::move(closed);
    }
    void bringToFront() override { journal_.emplace_back("onboarding to front"); }
    void close() override {
        journal_.emplace_back("onboarding closed");
        onClose();
    }

    std::function<void()> onComplete;
    std::function<void()> onClose;

  private:
    Journal& journal_;
};

class RecordedShell final : public ApplicationShell {
  public:
    explicit RecordedShell(Journal& journal) : journal_(journal) {}
    void setActivationPolicy(ActivationPolicy policy) override {
        journal_.emplace_back(policy == ActivationPolicy::regular ? "regular" : "accessory");
    }
    void activateIgnoringOtherApplications() override { journal_.emplace_back("activate"); }
    void terminate() override { journal_.emplace_back("terminate"); }

  private:
    Journal& journal_;
};

class RecordedStatusBar final : public StatusBarPresenting {
  public:
    explicit RecordedStatusBar(Journal& journal) : journal_(journal) {}
    void attach(AppModel& model) override {
        journal_.push_back("status bar, " + model.hoverStatus());
    }

  private:
    Journal& journal_;
};

class RecordedSpeech final : public Speaking {
  public:
    void speak(const std::string& text) override { spoken.push_back(text); }

    std::vector<std::string> spoken;
};

class RecordedUpdates final : public SoftwareUpdating {
  public:
    std::optional<std::string> availableUpdateVersion() const override { return version; }
    void observeAvailableUpdateVersion(Observer newObserver) override {
        observer = std::move(newObserver);
        observer(version);
    }
    void checkForUpdates() override {}

    std::optional<std::string> version;
    Observer observer;
};

class RecordedPasteboard final : public Pasteboard {
  public:
    void setText(const std::string& newText) override { text = newText; }

    std::string text;
};

class RecordedScreens final : public Screens {
  public:
    std::vector<Screen> all() const override { return screens; }

    std::vector<Screen> screens{{{0, 0, 1600, 1000}, {0, 0, 1600, 1000}}};
};

/// Holds every question until the test answers it.
class RecordedExtractor final : public TextExtracting {
  public:
    struct Asked {
        Point point;
        std::vector<Rect> excluding;
        Completion completion;
    };
    void extract(Point point, std::vector<Rect> excluding, Completion completion) override {
        asked.push_back({point, std::move(excluding), std::move(completion)});
    }

    std::vector<Asked> asked;
};

/// Lookup records with their own copies of everything.
class RecordedLookups final : public LookupRecording {
  public:
    struct Taken {
        std::string event;
        Point cursorPoint;
        std::optional<std::string> probe;
        std::optional<std::string> match;
        std::size_t results = 0;
        std::optional<Rect> anchorRect;
        std::optional<std::string> mode;
        std::optional<std::string> reason;
        bool operator==(const Taken&) const = default;
    };

    void record(const LookupRecord& record) override {
        const auto copied = [](const std::optional<std::string_view>& text) {
            return text ? std::optional<std::string>(*text) : std::nullopt;
        };
        records.push_back({std::string(record.event), record.cursorPoint,
                           record.probe ? std::optional(record.probe->text) : std::nullopt,
                           record.match ? std::optional(record.match->matchedText) : std::nullopt,
                           record.results.size(), record.anchorRect, copied(record.mode),
                           copied(record.reason)});
    }

    std::vector<Taken> records;
};

}  // namespace velmora::testing
