// SPDX-License-Identifier: MIT
#include "Benchmarks/recognition/HoverStage.h"

#include <ctime>

#include "Velmora/Platform/Linux/Tesseract/LineDetector.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Platform/Recorded/ManualMainQueue.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora {

namespace {

constexpr double desktopHeight = 4000;

double millisecondsOf(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The processor time spent so far, which other programs do not lengthen.
double processorTime(pid_t worker) {
    clockid_t clock{};
    const bool known = worker > 0 && ::clock_getcpuclockid(worker, &clock) == 0;
    return millisecondsOf(CLOCK_PROCESS_CPUTIME_ID) + (known ? millisecondsOf(clock) : 0);
}

/// A window whose program tells nothing about what it shows.
class SilentWindow : public AccessibilityElement {
  public:
    Pointer parent() const override { return nullptr; }
    std::optional<std::string> selectedText() const override { return std::nullopt; }
    std::optional<Utf16Range> selectedTextRange() const override { return std::nullopt; }
    std::optional<std::string> value() const override { return std::nullopt; }
    std::optional<std::string> title() const override { return std::nullopt; }
    std::optional<Point> position() const override { return std::nullopt; }
    std::optional<Size> size() const override { return std::nullopt; }
    std::optional<std::int64_t> longValueLength() const override { return std::nullopt; }
    std::optional<Utf16Range> rangeForPosition(Point /*point*/) const override {
        return std::nullopt;
    }
    std::optional<std::string> stringForRange(Utf16Range /*range*/) const override {
        return std::nullopt;
    }
    std::optional<Rect> boundsForRange(Utf16Range /*range*/) const override { return std::nullopt; }
    bool equals(const AccessibilityElement& other) const override { return this == &other; }
};

class SilentPrograms : public AccessibilitySystem {
  public:
    AccessibilityElement::Pointer elementAtPosition(Point /*point*/) override {
        return std::make_shared<SilentWindow>();
    }
    AccessibilityElement::Pointer focusedElement() override { return nullptr; }
};

class NoCapture : public ScreenCapture {
  public:
    std::vector<Display> displays() override { return {}; }
    std::optional<Image> capture(std::uint64_t /*display*/, const Rect& /*rect*/) override {
        return std::nullopt;
    }
};

class OneScreen : public Screens {
  public:
    std::vector<Screen> all() const override { return {{{0, 0, 4000, 4000}, {0, 0, 4000, 4000}}}; }
};

class SameThread : public SerialQueue {
  public:
    const std::string& label() const override { return label_; }
    void async(std::function<void()> work) override { work(); }

  private:
    std::string label_ = ExtractionServices::queueLabel;
};

}  // namespace

/// Counts how often the recogniser was asked.
struct HoverStage::Recognizer : TextRecognizer {
    explicit Recognizer(std::shared_ptr<TextRecognizer> inner) : real(std::move(inner)) {}

    std::optional<std::vector<TextObservation>> recognize(const Image& image,
                                                          std::optional<Point> point,
                                                          int limit) override {
        ++asked;
        return real->recognize(image, point, limit);
    }
    std::optional<std::vector<TextObservation>> verify(const Image& image,
                                                       const std::vector<TextObservation>& lines,
                                                       Point point, int limit) override {
        return real->verify(image, lines, point, limit);
    }

    std::shared_ptr<TextRecognizer> real;
    int asked = 0;
};

HoverStage::HoverStage(std::shared_ptr<TextRecognizer> recognizer,
                       std::shared_ptr<const DictionaryStore> dictionary, Mode mode)
    : mayRemember_(mode == Mode::cached),
      recognizer_(std::make_shared<Recognizer>(std::move(recognizer))),
      dictionary_(std::move(dictionary)),
      clock_(std::make_shared<ManualClock>()) {
    ExtractorConfiguration configuration;
    configuration.desktopHeightOverride = desktopHeight;
    configuration.ocrCacheTTL = mode == Mode::cached ? configuration.ocrCacheTTL : -1;
    if (mode == Mode::firstCaptureOnly) {
        configuration.ocrCaptureSizes.resize(1);
        configuration.ocrFallbackCaptureSizes.clear();
        configuration.ocrFullContextCaptureSizes.clear();
    }
    configuration.capture = [this](Point pointer, Size size) -> std::optional<CapturedImage> {
        captured_ = size;
        const Rect all{0, 0, static_cast<double>(image_.width()),
                       static_cast<double>(image_.height())};
        const Rect rect =
            Rect{pointer.x - size.width / 2, pointer.y - size.height / 2, size.width, size.height}
                .intersection(all)
                .integral();
        if (rect.isEmpty()) {
            return std::nullopt;
        }
        return CapturedImage{
            image_.cropped(static_cast<int>(rect.x), static_cast<int>(rect.y),
                           static_cast<int>(rect.width), static_cast<int>(rect.height)),
            rect};
    };
    extractor_ = AccessibilityTextExtractor::create(
        {std::make_shared<SilentPrograms>(), std::make_shared<NoCapture>(), recognizer_,
         std::make_shared<LineDetector>(), std::make_shared<OneScreen>(), clock_,
         std::make_shared<SameThread>(), std::make_shared<ManualMainQueue>()},
        configuration);
}

HoverStage::~HoverStage() = default;

void HoverStage::show(Image image) {
    image_ = std::move(image);
    clock_->advance(10);  // Nothing of the last picture is remembered.
}

/// The word that is shown, with its place: "place:word"; empty where none is.
std::string HoverStage::word(const std::string& text, long long offset) const {
    const auto result = LookupEngine(dictionary_).lookup(text, offset);
    return result ? std::to_string(result->range.start - offset) + ":" + result->matchedText
                  : std::string();
}

HoverOutcome HoverStage::hover(const CorpusHover& hover) {
    HoverOutcome outcome;
    outcome.expected = word(hover.line, hover.offset);
    if (!mayRemember_) {
        clock_->advance(10);
    }
    captured_ = {};
    recognizer_->asked = 0;
    const double processorStart = processorTime(worker_);
    const auto start = std::chrono::steady_clock::now();
    const std::optional<TextProbe> probe = extractor_->extract(
        Point{static_cast<double>(hover.x), desktopHeight - static_cast<double>(hover.y)}, {},
        nullptr);
    outcome.milliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    outcome.processorMilliseconds = processorTime(worker_) - processorStart;
    if (probe) {
        outcome.shown = word(probe->text, probe->hoveredCharacterOffset);
        outcome.accepted = recognizer_->asked == 1;
        outcome.cached = recognizer_->asked == 0;
        outcome.capture = captured_;
    }
    outcome.right = outcome.shown == outcome.expected;
    outcome.wrong = !outcome.shown.empty() && !outcome.right;
    return outcome;
}

}  // namespace velmora
