// SPDX-License-Identifier: MIT
#include "Benchmarks/recognition/PlainTesseract.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <array>

#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"

namespace velmora {

namespace {

class PlainText : public RecognizedText {
  public:
    void add(const std::string& character, const Rect& box) {
        text_ += character;
        boxes_.push_back(box);
    }
    void setConfidence(float confidence) { confidence_ = confidence; }
    bool empty() const { return boxes_.empty(); }

    const std::string& string() const override { return text_; }
    float confidence() const override { return confidence_; }
    std::optional<Rect> boundingBox(std::size_t from, std::size_t to) const override {
        if (from >= to || to > boxes_.size()) {
            return std::nullopt;
        }
        Rect box = boxes_[from];
        for (std::size_t i = from; i < to; ++i) {
            box = box.united(boxes_[i]);
        }
        return box;
    }

  private:
    std::string text_;
    std::vector<Rect> boxes_;
    float confidence_ = 0;
};

PIX* doubledGray(const Image& image) {
    PIX* colour = pixCreate(image.width(), image.height(), 32);
    for (int y = 0; y < image.height(); ++y) {
        l_uint32* row = pixGetData(colour) + static_cast<std::ptrdiff_t>(y) * pixGetWpl(colour);
        for (int x = 0; x < image.width(); ++x) {
            row[x] = image.row(y)[x] << 8;
        }
    }
    PIX* gray = pixConvertRGBToLuminance(colour);
    PIX* doubled = pixScale(gray, 2, 2);
    pixDestroy(&gray);
    pixDestroy(&colour);
    return doubled;
}

}  // namespace

struct PlainTesseract::Implementation {
    std::array<tesseract::TessBaseAPI, 2> apis;
};

PlainTesseract::PlainTesseract() : implementation_(std::make_unique<Implementation>()) {
    const std::string folder = RecognizerProcess::defaultDataFolder();
    const std::array<const char*, 2> languages{"chi_sim", "chi_tra"};
    for (std::size_t i = 0; i < languages.size(); ++i) {
        implementation_->apis[i].Init(folder.c_str(), languages[i], tesseract::OEM_LSTM_ONLY);
        implementation_->apis[i].SetPageSegMode(tesseract::PSM_SINGLE_BLOCK);
        implementation_->apis[i].SetVariable("debug_file", "/dev/null");
    }
}

PlainTesseract::~PlainTesseract() = default;

std::optional<std::vector<TextObservation>> PlainTesseract::recognize(
    const Image& image, std::optional<Point> /*pointOfInterest*/, int /*candidateLimit*/) {
    tesseract::TessBaseAPI& api = implementation_->apis[traditional_ ? 1 : 0];
    PIX* picture = doubledGray(image);
    const double width = pixGetWidth(picture);
    const double height = pixGetHeight(picture);
    api.SetImage(picture);
    std::vector<TextObservation> observations;
    if (api.Recognize(nullptr) == 0) {
        const std::unique_ptr<tesseract::ResultIterator> symbol(api.GetIterator());
        const auto boxOf = [&](tesseract::PageIteratorLevel level) {
            int left = 0;
            int top = 0;
            int right = 0;
            int bottom = 0;
            symbol->BoundingBox(level, &left, &top, &right, &bottom);
            return Rect{left / width, 1 - bottom / height, (right - left) / width,
                        (bottom - top) / height};
        };
        std::shared_ptr<PlainText> line;
        for (bool more = symbol && !symbol->Empty(tesseract::RIL_SYMBOL); more;
             more = symbol->Next(tesseract::RIL_SYMBOL)) {
            if (!line || symbol->IsAtBeginningOf(tesseract::RIL_TEXTLINE)) {
                line = std::make_shared<PlainText>();
                line->setConfidence(symbol->Confidence(tesseract::RIL_TEXTLINE) / 100);
                observations.push_back({boxOf(tesseract::RIL_TEXTLINE), {line}});
            }
            const std::unique_ptr<char[]> text(symbol->GetUTF8Text(tesseract::RIL_SYMBOL));
            if (text) {
                line->add(text.get(), boxOf(tesseract::RIL_SYMBOL));
            }
        }
    }
    api.Clear();
    pixDestroy(&picture);
    return observations;
}

}  // namespace velmora
