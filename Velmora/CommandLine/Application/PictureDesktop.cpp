// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/PictureDesktop.h"

#include <utility>

namespace velmora {

namespace {

Rect boundsOf(const Image& picture) {
    return {0, 0, static_cast<double>(picture.width()), static_cast<double>(picture.height())};
}

/// An element that tells where it is and nothing else.
class SilentElement final : public AccessibilityElement {
  public:
    explicit SilentElement(const Rect& bounds) : bounds_(bounds) {}

    Pointer parent() const override { return nullptr; }
    std::optional<std::string> selectedText() const override { return std::nullopt; }
    std::optional<Utf16Range> selectedTextRange() const override { return std::nullopt; }
    std::optional<std::string> value() const override { return std::nullopt; }
    std::optional<std::string> title() const override { return std::nullopt; }
    std::optional<Point> position() const override { return Point{bounds_.x, bounds_.y}; }
    std::optional<Size> size() const override { return bounds_.size(); }
    std::optional<std::int64_t> longValueLength() const override { return std::nullopt; }
    std::optional<Utf16Range> rangeForPosition(Point) const override { return std::nullopt; }
    std::optional<std::string> stringForRange(Utf16Range) const override { return std::nullopt; }
    std::optional<Rect> boundsForRange(Utf16Range) const override { return std::nullopt; }
    bool equals(const AccessibilityElement& other) const override { return &other == this; }

  private:
    Rect bounds_;
};

class PictureAccessibility final : public AccessibilitySystem {
  public:
    explicit PictureAccessibility(const Rect& bounds)
        : bounds_(bounds), element_(std::make_shared<SilentElement>(bounds)) {}

    AccessibilityElement::Pointer elementAtPosition(Point point) override {
        return bounds_.contains(point) ? element_ : nullptr;
    }
    AccessibilityElement::Pointer focusedElement() override { return nullptr; }

  private:
    Rect bounds_;
    AccessibilityElement::Pointer element_;
};

class PictureCapture final : public ScreenCapture {
  public:
    explicit PictureCapture(Image picture) : picture_(std::move(picture)) {}

    std::vector<Display> displays() override { return {{1, boundsOf(picture_)}}; }

    std::optional<Image> capture(std::uint64_t, const Rect& rect) override {
        const Rect inside = rect.intersection(boundsOf(picture_)).integral();
        Image image =
            picture_.cropped(static_cast<int>(inside.x), static_cast<int>(inside.y),
                             static_cast<int>(inside.width), static_cast<int>(inside.height));
        return image.isEmpty() ? std::nullopt : std::optional(std::move(image));
    }

  private:
    Image picture_;
};

class PictureScreens final : public Screens {
  public:
    explicit PictureScreens(const Rect& bounds) : bounds_(bounds) {}

    std::vector<Screen> all() const override { return {{bounds_, bounds_}}; }

  private:
    Rect bounds_;
};

}  // namespace

PictureDesktop::PictureDesktop(const Image& picture)
    : accessibility_(std::make_shared<PictureAccessibility>(boundsOf(picture))),
      screenCapture_(std::make_shared<PictureCapture>(picture)),
      screens_(std::make_shared<PictureScreens>(boundsOf(picture))) {}

}  // namespace velmora
