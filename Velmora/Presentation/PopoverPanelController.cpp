// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/PopoverPanelController.h"

#include <QQuickItem>
#include <cmath>

#include "Velmora/Presentation/LookupItem.h"
#include "Velmora/Presentation/LookupListModel.h"
#include "Velmora/Presentation/SpeakRelay.h"

namespace velmora {

namespace {

constexpr Size selectionSize{430, 430};

/// More than two lines can show, at any size.
constexpr qsizetype longestSelectedText = 2000;

double usableScale(double fontScale) {
    constexpr double least = 0.1;
    constexpr double greatest = 4;
    return std::isfinite(fontScale) && fontScale > 0 ? std::clamp(fontScale, least, greatest) : 1;
}

/// Windows are whole points large.
Size fittingSize(const QQuickItem& view) {
    return {std::ceil(view.implicitWidth()), std::ceil(view.implicitHeight())};
}

QRect wholePoints(const Rect& rect) {
    return {static_cast<int>(std::lround(rect.x)), static_cast<int>(std::lround(rect.y)),
            static_cast<int>(std::lround(rect.width)), static_cast<int>(std::lround(rect.height))};
}

/// A word with a part of every kind and the letters that readings are written with.
LookupResult sampleResult() {
    LookupResult sample;
    sample.matchedText = "汉语漢語";
    sample.entry.simplified = "汉语";
    sample.entry.pinyinMarked = "āáǎàōóǒòēéěèīíǐìūúǔùüǖǘǚǜ abcdefghijklmnopqrstuvwxyz";
    sample.entry.hskLevel = 1;
    sample.entry.definitions.push_back(
        {.partOfSpeech = "n.", .glosses = {sample.entry.pinyinMarked, "ABC (123);,-/"}});
    sample.entry.examples.push_back(
        {.hanzi = sample.matchedText, .pinyin = sample.entry.pinyinMarked, .english = "Example."});
    sample.characterBreakdown = {sample.entry, sample.entry};
    return sample;
}

}  // namespace

PopoverPanelController::PopoverPanelController(Speaking& speechService,
                                               const ScreenGeometrySource& screens,
                                               ViewEngine& views)
    : speechService_(speechService), screens_(screens), views_(views) {}

PopoverPanelController::~PopoverPanelController() = default;

void PopoverPanelController::showPinyin(const std::string& pinyin, const Rect& anchor,
                                        double fontScale) {
    present(makePinyin(pinyin, fontScale), {{110, 38}, {56, 32}, {260, 48}}, anchor,
            Placement::above);
}

void PopoverPanelController::show(const std::vector<LookupResult>& results,
                                  const std::optional<std::string>& selectedText,
                                  const Rect& anchor, bool toneColorsEnabled, double fontScale) {
    if (results.empty()) {
        orderOut();
    } else if (selectedText) {
        present(makeSelection(results, *selectedText, toneColorsEnabled, fontScale),
                {selectionSize, selectionSize, selectionSize}, anchor, Placement::below);
    } else {
        present(makeEntry(results.front(), toneColorsEnabled, fontScale),
                {{360, 260}, {320, 180}, {390, 360}}, anchor, Placement::below);
    }
}

std::optional<Rect> PopoverPanelController::visiblePanelFrame() const {
    if (!panel_ || !panel_->isVisible()) {
        return std::nullopt;
    }
    const QRect frame = panel_->geometry();
    return screens_.current().screenFromLogical(
        Rect{static_cast<double>(frame.x()), static_cast<double>(frame.y()),
             static_cast<double>(frame.width()), static_cast<double>(frame.height())});
}

void PopoverPanelController::orderOut() {
    if (panel_) {
        framePending_ = false;
        panel_->orderOut();
    }
}

void PopoverPanelController::setFramePaintedObserver(std::function<void()> observer) {
    framePainted_ = std::move(observer);
}

std::unique_ptr<QQuickItem> PopoverPanelController::makeEntry(const LookupResult& result,
                                                              bool toneColorsEnabled,
                                                              double fontScale) {
    auto view = views_.create(
        QStringLiteral("EntryPopoverView"),
        {{QStringLiteral("result"),
          QVariant::fromValue(LookupItem(std::make_shared<const LookupResult>(result)))},
         {QStringLiteral("toneColorsEnabled"), toneColorsEnabled},
         {QStringLiteral("fontScale"), usableScale(fontScale)}});
    if (view) {
        connectSpeak(*view);
    }
    return view;
}

std::unique_ptr<QQuickItem> PopoverPanelController::makeSelection(
    const std::vector<LookupResult>& results, const std::string& selectedText,
    bool toneColorsEnabled, double fontScale) {
    auto model = std::make_unique<LookupListModel>(results);
    auto view =
        views_.create(QStringLiteral("SelectionPopoverView"),
                      {{QStringLiteral("selectedText"),
                        QString::fromStdString(selectedText).left(longestSelectedText)},
                       {QStringLiteral("results"), QVariant::fromValue<QObject*>(model.get())},
                       {QStringLiteral("toneColorsEnabled"), toneColorsEnabled},
                       {QStringLiteral("fontScale"), usableScale(fontScale)}});
    if (view) {
        model.release()->setParent(view.get());
        connectSpeak(*view);
    }
    return view;
}

std::unique_ptr<QQuickItem> PopoverPanelController::makePinyin(const std::string& pinyin,
                                                               double fontScale) {
    return views_.create(QStringLiteral("PinyinPopoverView"),
                         {{QStringLiteral("pinyin"), QString::fromStdString(pinyin)},
                          {QStringLiteral("fontScale"), usableScale(fontScale)}});
}

void PopoverPanelController::connectSpeak(QQuickItem& view) {
    auto* relay = new SpeakRelay(speechService_, &view);
    QObject::connect(&view, SIGNAL(speak(QString)), relay, SLOT(speak(QString)));
}

void PopoverPanelController::present(std::unique_ptr<QQuickItem> view, const SizeRule& rule,
                                     const Rect& anchor, Placement placement) {
    if (!view || !anchor.isFinite()) {
        orderOut();
        return;
    }
    ensurePanel();
    const Size size = measuredSize(fittingSize(*view), rule.fallback, rule.minimum, rule.maximum);
    const ScreenGeometry geometry = screens_.current();
    const Point corner = origin(size, anchor, placement, geometry.screens());
    panel_->setView(std::move(view));
    framePending_ = true;
    panel_->showAt(
        wholePoints(geometry.logicalFromScreen(Rect{corner.x, corner.y, size.width, size.height})));
}

void PopoverPanelController::ensurePanel() {
    if (panel_) {
        return;
    }
    panel_ = std::make_unique<PanelWindow>(views_.theme());
    QObject::connect(panel_.get(), &QQuickWindow::frameSwapped, panel_.get(), [this] {
        if (framePending_ && panel_->isVisible()) {
            framePending_ = false;
            if (framePainted_) {
                framePainted_();
            }
        }
    });
}

void PopoverPanelController::whileHidden(const std::function<void(PanelWindow&)>& work) {
    ensurePanel();
    if (!panel_->isVisible()) {
        work(*panel_);
    }
}

std::vector<std::function<void()>> PopoverPanelController::warmUpSteps() {
    std::vector<std::function<void()>> steps;
    const auto add = [this, &steps](std::function<void(PanelWindow&)> work) {
        steps.emplace_back([this, work = std::move(work)] { whileHidden(work); });
    };
    const auto addView = [&add](QSize size, auto make) {
        add([make](PanelWindow& panel) { panel.setView(make()); });
        add([size](PanelWindow& panel) { panel.prepare(size); });
    };
    // They are read while the rest is made.
    for (const char* const view :
         {"PinyinPopoverView", "EntryPopoverView", "SelectionPopoverView"}) {
        add([this, view](PanelWindow&) { views_.loadInBackground(QString::fromLatin1(view)); });
    }
    add([](PanelWindow& panel) { panel.create(); });
    add([](PanelWindow& panel) { panel.prepareShadow(); });
    // The shapes that the pointer takes over our windows are read when they are set first.
    add([](PanelWindow& panel) {
        panel.setCursor(Qt::PointingHandCursor);
        panel.setCursor(Qt::ArrowCursor);
        panel.unsetCursor();
    });
    // The least one first: what it shares with the others is there then.
    const auto sample = std::make_shared<const LookupResult>(sampleResult());
    addView({110, 38}, [this, sample] { return makePinyin(sample->entry.pinyinMarked, 1); });
    // Its parts by and by: each is read when it is made for the first time.
    LookupResult part = *sample;
    part.characterBreakdown.clear();
    part.entry.examples.clear();
    const LookupResult withGlosses = part;
    part.entry.definitions.clear();
    for (const LookupResult& each : {part, withGlosses}) {
        add([this, each](PanelWindow& panel) { panel.setView(makeEntry(each, true, 1)); });
    }
    addView({360, 360}, [this, sample] { return makeEntry(*sample, true, 1); });
    addView({430, 430},
            [this, sample] { return makeSelection({*sample}, sample->matchedText, true, 1); });
    add([](PanelWindow& panel) { panel.setView(nullptr); });
    return steps;
}

void PopoverPanelController::warmUp() {
    for (const auto& step : warmUpSteps()) {
        step();
    }
}

}  // namespace velmora
