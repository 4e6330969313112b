// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/TesseractEngine.h"

#include <leptonica/allheaders.h>
#include <tesseract/baseapi.h>
#include <tesseract/resultiterator.h>

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

namespace velmora {

namespace {

struct PixDeleter {
    void operator()(PIX* pix) const { pixDestroy(&pix); }
};
using PixPointer = std::unique_ptr<PIX, PixDeleter>;

const char* languageName(ScriptModel model) {
    return model == ScriptModel::simplified ? "chi_sim" : "chi_tra";
}

PixPointer toPix(const GrayImage& image) {
    PixPointer pix(pixCreate(image.width(), image.height(), 8));
    if (!pix) {
        return pix;
    }
    l_uint32* data = pixGetData(pix.get());
    const int wordsPerLine = pixGetWpl(pix.get());
    for (int y = 0; y < image.height(); ++y) {
        l_uint32* row = data + static_cast<std::ptrdiff_t>(y) * wordsPerLine;
        for (int x = 0; x < image.width(); ++x) {
            SET_DATA_BYTE(row, x, image.at(x, y));
        }
    }
    return pix;
}

/// The network reports a character this much later than it stands, in pixels of a 48 pixel line.
constexpr double networkDelay = 12;

LineReading symbolsOf(tesseract::ResultIterator& iterator) {
    LineReading reading;
    do {
        const std::unique_ptr<char[]> text(iterator.GetUTF8Text(tesseract::RIL_SYMBOL));
        if (!text || text[0] == '\0' || text[0] == ' ') {
            continue;
        }
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        iterator.BoundingBox(tesseract::RIL_SYMBOL, &left, &top, &right, &bottom);
        const float confidence = iterator.Confidence(tesseract::RIL_SYMBOL) / 100;
        reading.push_back({text.get(), std::clamp(confidence, 0.0F, 1.0F), left - networkDelay,
                           right - networkDelay});
    } while (iterator.Next(tesseract::RIL_SYMBOL));
    return reading;
}

}  // namespace

struct TesseractEngine::Implementation {
    tesseract::TessBaseAPI api;
};

TesseractEngine::TesseractEngine() : implementation_(std::make_unique<Implementation>()) {}

TesseractEngine::~TesseractEngine() = default;

ModelState TesseractEngine::load(const std::string& dataFolder, ScriptModel model) {
    const std::string file = dataFolder + "/" + languageName(model) + ".traineddata";
    std::error_code error;
    if (dataFolder.empty() || !std::filesystem::is_regular_file(file, error)) {
        return ModelState::missing;
    }
    tesseract::TessBaseAPI& api = implementation_->api;
    // What comes in is black on white already; complaints go nowhere.
    const std::vector<std::string> names{"debug_file", "tessedit_do_invert"};
    const std::vector<std::string> values{"/dev/null", "0"};
    if (api.Init(dataFolder.c_str(), languageName(model), tesseract::OEM_LSTM_ONLY, nullptr, 0,
                 &names, &values, false) != 0) {
        return ModelState::damaged;
    }
    api.SetPageSegMode(tesseract::PSM_RAW_LINE);
    return ModelState::ready;
}

std::optional<LineReading> TesseractEngine::read(const GrayImage& line) {
    const PixPointer pix = toPix(line);
    if (!pix) {
        return std::nullopt;
    }
    tesseract::TessBaseAPI& api = implementation_->api;
    api.SetImage(pix.get());
    api.SetSourceResolution(96);
    LineReading reading;
    const bool recognized = api.Recognize(nullptr) == 0;
    if (recognized) {
        const std::unique_ptr<tesseract::ResultIterator> iterator(api.GetIterator());
        if (iterator && !iterator->Empty(tesseract::RIL_SYMBOL)) {
            reading = symbolsOf(*iterator);
        }
    }
    api.Clear();
    return recognized ? std::optional(std::move(reading)) : std::nullopt;
}

}  // namespace velmora
