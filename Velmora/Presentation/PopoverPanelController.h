// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <functional>
#include <memory>
#include <vector>

#include "Velmora/Coordination/PopoverPresenting.h"
#include "Velmora/Coordination/Speaking.h"
#include "Velmora/Platform/ScreenGeometrySource.h"
#include "Velmora/Presentation/PanelPlacement.h"
#include "Velmora/Presentation/PanelWindow.h"
#include "Velmora/Presentation/ViewEngine.h"

namespace velmora {

/// Shows every lookup in one floating panel: sizes it to its content, places it beside the matched
/// text and leaves the focus where it is. Main thread.
class PopoverPanelController : public PopoverPresenting {
  public:
    /// All of them outlive the controller.
    PopoverPanelController(Speaking& speechService, const ScreenGeometrySource& screens,
                           ViewEngine& views);
    ~PopoverPanelController() override;

    void showPinyin(const std::string& pinyin, const Rect& anchor, double fontScale) override;
    void show(const std::vector<LookupResult>& results,
              const std::optional<std::string>& selectedText, const Rect& anchor,
              bool toneColorsEnabled, double fontScale) override;
    std::optional<Rect> visiblePanelFrame() const override;
    void orderOut() override;

    /// What does in advance what the first show would have to: reads the views, loads the fonts,
    /// makes the window. Shows nothing. In short pieces, to be called in this order with other
    /// events between them; while a panel is shown they do nothing. The controller outlives them.
    std::vector<std::function<void()>> warmUpSteps();

    /// All of that at once.
    void warmUp();

    /// Called once after every show, when its first frame is on its way to the screen.
    void setFramePaintedObserver(std::function<void()> observer);

    /// Null until the first show or `warmUp`; the same from then on.
    PanelWindow* panel() const { return panel_.get(); }

  private:
    /// The bounds of a panel of one kind.
    struct SizeRule {
        Size fallback;
        Size minimum;
        Size maximum;
    };

    std::unique_ptr<QQuickItem> makeEntry(const LookupResult& result, bool toneColorsEnabled,
                                          double fontScale);
    std::unique_ptr<QQuickItem> makeSelection(const std::vector<LookupResult>& results,
                                              const std::string& selectedText,
                                              bool toneColorsEnabled, double fontScale);
    std::unique_ptr<QQuickItem> makePinyin(const std::string& pinyin, double fontScale);
    void connectSpeak(QQuickItem& view);
    void whileHidden(const std::function<void(PanelWindow&)>& work);
    void present(std::unique_ptr<QQuickItem> view, const SizeRule& rule, const Rect& anchor,
                 Placement placement);
    void ensurePanel();

    Speaking& speechService_;
    const ScreenGeometrySource& screens_;
    ViewEngine& views_;
    std::unique_ptr<PanelWindow> panel_;
    std::function<void()> framePainted_;
    bool framePending_ = false;
};

}  // namespace velmora
