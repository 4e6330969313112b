// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/RecognizerState.h"

namespace velmora {

namespace {

std::string modelProblem(ModelState state, const std::string& language,
                         const std::string& package) {
    switch (state) {
        case ModelState::missing:
            return "recognition data for " + language + " is missing: install " + package;
        case ModelState::damaged:
            return "recognition data for " + language + " is damaged: reinstall " + package;
        case ModelState::loading:
        case ModelState::ready:
            break;
    }
    return {};
}

/// Where only one script can be read, the program goes on with that.
RecognitionStatus::Stage stageOf(const RecognizerState& state) {
    using Worker = RecognizerState::Worker;
    using Stage = RecognitionStatus::Stage;
    switch (state.worker) {
        case Worker::notStarted:
            return Stage::notStarted;
        case Worker::loading:
            return Stage::loading;
        case Worker::ready:
            return state.canRead() ? Stage::ready : Stage::unavailable;
        case Worker::unavailable:
            break;
    }
    return Stage::unavailable;
}

}  // namespace

RecognitionStatus RecognizerState::status() const {
    RecognitionStatus status{stageOf(*this), {}, {}, description()};
    const auto note = [&status](ModelState model, const char* language) {
        if (model == ModelState::missing) {
            status.missing.emplace_back(language);
        } else if (model == ModelState::damaged) {
            status.damaged.emplace_back(language);
        }
    };
    note(simplified, "chi_sim");
    note(traditional, "chi_tra");
    return status;
}

std::string RecognizerState::description() const {
    switch (worker) {
        case Worker::notStarted:
            return "not started";
        case Worker::loading:
            return "loading";
        case Worker::unavailable:
            return "velmora-recognizer cannot be run: reinstall velmora";
        case Worker::ready:
            break;
    }
    std::string text = modelProblem(simplified, "simplified Chinese", "tesseract-ocr-chi-sim");
    const std::string more =
        modelProblem(traditional, "traditional Chinese", "tesseract-ocr-chi-tra");
    if (!text.empty() && !more.empty()) {
        text += "; ";
    }
    text += more;
    return text.empty() ? "ready" : text;
}

}  // namespace velmora
