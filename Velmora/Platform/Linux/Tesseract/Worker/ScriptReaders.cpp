// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/ScriptReaders.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

bool isSame(const ReadLineRequest& a, const ReadLineRequest& b) {
    return a.model == b.model && a.line.width() == b.line.width() &&
           a.line.pixels() == b.line.pixels();
}

}  // namespace

ModelState ScriptReaders::load(const std::string& dataFolder, ScriptModel model) {
    auto engine = std::make_unique<TesseractEngine>();
    const ModelState state = engine->load(dataFolder, model);
    if (state == ModelState::ready) {
        engines_.at(static_cast<std::size_t>(model)).engine = std::move(engine);
    }
    return state;
}

void ScriptReaders::begin(ReadLineRequest request) {
    if (!companion_.isThere()) {
        return;
    }
    auto line = std::make_shared<Ahead>();
    line->request = std::move(request);
    {
        const std::lock_guard lock(mutex_);
        if (ahead_.size() >= mostAhead) {
            ahead_.pop_front();
        }
        ahead_.push_back(line);
    }
    companion_.begin([this, line] { readAhead(line); });
}

void ScriptReaders::readAhead(const std::shared_ptr<Ahead>& line) {
    {
        const std::lock_guard lock(mutex_);
        // Taken back, or crowded out by later ones.
        if (std::find(ahead_.begin(), ahead_.end(), line) == ahead_.end()) {
            return;
        }
        line->state = Ahead::State::running;
    }
    std::optional<LineReading> reading = readNow(line->request);
    {
        const std::lock_guard lock(mutex_);
        line->reading = std::move(reading);
        line->state = Ahead::State::done;
    }
    finished_.notify_all();
}

std::optional<LineReading> ScriptReaders::read(const ReadLineRequest& request) {
    std::shared_ptr<Ahead> line;
    {
        std::unique_lock lock(mutex_);
        const auto found = std::find_if(ahead_.begin(), ahead_.end(), [&](const auto& candidate) {
            return isSame(candidate->request, request);
        });
        if (found != ahead_.end()) {
            line = *found;
            ahead_.erase(found);
            finished_.wait(lock, [&] { return line->state != Ahead::State::running; });
        }
    }
    return line && line->state == Ahead::State::done ? std::move(line->reading) : readNow(request);
}

std::optional<LineReading> ScriptReaders::readNow(const ReadLineRequest& request) {
    Engine& engine = engines_.at(static_cast<std::size_t>(request.model));
    const std::lock_guard lock(engine.mutex);
    return engine.engine ? engine.engine->read(request.line) : std::nullopt;
}

}  // namespace velmora
