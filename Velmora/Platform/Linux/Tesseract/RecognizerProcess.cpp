// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/RecognizerProcess.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "Velmora/Platform/Linux/Tesseract/ChildProcess.h"
#include "Velmora/Platform/Linux/XdgPaths.h"

namespace velmora {

namespace {

using Clock = std::chrono::steady_clock;
using Kind = RecognizerMessage::Kind;

constexpr int drawingSize = 48;
constexpr int failuresUntilPause = 3;

/// Waits for an event on the socket; false when the deadline passes first.
bool waitFor(int descriptor, short event, Clock::time_point deadline) {
    while (true) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd entry{descriptor, event, 0};
        const int count =
            ::poll(&entry, 1, static_cast<int>(std::max<std::int64_t>(0, left.count())));
        if (count > 0) {
            return true;
        }
        if (count == 0 || errno != EINTR) {
            return false;
        }
    }
}

bool fitsMessage(const GrayImage& line) {
    return !line.isEmpty() && line.width() <= RecognizerMessage::greatestWidth &&
           line.height() <= RecognizerMessage::greatestHeight &&
           line.pixels().size() + RecognizerMessage::headerSize <= RecognizerMessage::greatestBody;
}

bool isExecutable(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

RecognizerProcess::RecognizerProcess(Options options) : options_(std::move(options)) {
    if (options_.executable.empty()) {
        options_.executable = defaultExecutable();
    }
    if (options_.dataFolder.empty()) {
        options_.dataFolder = defaultDataFolder();
    }
    if (options_.glyphFolder.empty()) {
        options_.glyphFolder = defaultGlyphFolder();
    }
}

RecognizerProcess::~RecognizerProcess() = default;

std::string RecognizerProcess::defaultExecutable() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) {
        return {};
    }
    const std::filesystem::path folder = self.parent_path();
    for (const std::filesystem::path& candidate :
         {folder / "velmora-recognizer", folder / "../lib/velmora/velmora-recognizer"}) {
        if (isExecutable(candidate)) {
            return candidate.string();
        }
    }
    return {};
}

std::string RecognizerProcess::defaultDataFolder() {
    std::vector<std::string> folders;
    if (const char* prefix = std::getenv("TESSDATA_PREFIX")) {
        folders.push_back(prefix);
    }
    folders.insert(folders.end(),
                   {"/usr/share/tesseract-ocr/5/tessdata", "/usr/share/tesseract-ocr/4.00/tessdata",
                    "/usr/share/tessdata"});
    for (const std::string& folder : folders) {
        for (const char* file : {"/chi_sim.traineddata", "/chi_tra.traineddata"}) {
            if (isExecutable(folder + file)) {
                return folder;
            }
        }
    }
    return "/usr/share/tesseract-ocr/5/tessdata";
}

std::string RecognizerProcess::defaultGlyphFolder() {
    const std::optional<std::filesystem::path> cache = xdg::cacheHome();
    return cache ? (*cache / "velmora").string() : std::string();
}

void RecognizerProcess::start() {
    const std::lock_guard lock(mutex_);
    if (!worker_) {
        startWorker();
    }
}

void RecognizerProcess::startWorker() {
    loadingModel_.reset();
    workerKnowsGlyphs_ = false;
    state_ = {RecognizerState::Worker::loading, ModelState::loading, ModelState::loading};
    const std::vector<std::string> arguments{"velmora-recognizer", options_.dataFolder,
                                             crashedModels_.empty() ? "-" : crashedModels_};
    if (!options_.executable.empty()) {
        worker_ = ChildProcess::start(options_.executable, arguments, {"OMP_THREAD_LIMIT=1"});
    }
    if (!worker_) {
        workerFailed();
    }
}

void RecognizerProcess::dropWorker() {
    worker_.reset();
    if (state_.worker != RecognizerState::Worker::unavailable) {
        state_.worker = RecognizerState::Worker::loading;
    }
}

/// Clears away a worker that has crashed or hangs and starts another one, at once after the first
/// failures and with a pause when they go on.
void RecognizerProcess::workerFailed() {
    dropWorker();
    if (loadingModel_) {
        crashedModels_ += loadingModel_ == ScriptModel::simplified ? '0' : '1';
    }
    if (++failuresInARow_ < failuresUntilPause && !options_.executable.empty()) {
        startWorker();
    } else {
        state_.worker = RecognizerState::Worker::unavailable;
        nextStart_ = Clock::now() + options_.restartPause;
    }
}

/// After several failures nobody asks for lines any more, so that whoever looks at the state gives
/// it another chance.
void RecognizerProcess::startAgainWhenDue() {
    if (!worker_ && state_.worker == RecognizerState::Worker::unavailable &&
        Clock::now() >= nextStart_) {
        startWorker();
    }
}

/// Whether a worker is there and ready, after a look at what it has reported meanwhile.
bool RecognizerProcess::ensureWorker() {
    startAgainWhenDue();
    return worker_ && takeReports(Clock::now()) && state_.worker == RecognizerState::Worker::ready;
}

/// Reads what the worker reports while it loads, until it is ready or the deadline passes.
/// False where the worker has gone.
bool RecognizerProcess::takeReports(Instant deadline) {
    while (worker_ && state_.worker == RecognizerState::Worker::loading) {
        if (!waitFor(worker_->socket(), POLLIN, deadline)) {
            return true;
        }
        const std::optional<RecognizerMessage> message =
            receive(Clock::now() + options_.answerLimit);
        if (!message) {
            workerFailed();
            return worker_ != nullptr;
        }
        noteReport(*message);
    }
    return worker_ != nullptr;
}

void RecognizerProcess::noteReport(const RecognizerMessage& message) {
    if (message.kind == Kind::ready) {
        loadingModel_.reset();
        state_.worker = RecognizerState::Worker::ready;
        return;
    }
    const std::optional<ModelReport> report = parseModelReport(message);
    if (!report) {
        return;
    }
    loadingModel_ = message.kind == Kind::loading ? std::optional(report->model) : std::nullopt;
    (report->model == ScriptModel::simplified ? state_.simplified : state_.traditional) =
        report->state;
}

bool RecognizerProcess::waitUntilReady(Duration limit) {
    const Instant deadline = Clock::now() + limit;
    const std::lock_guard lock(mutex_);
    while (worker_ && state_.worker == RecognizerState::Worker::loading &&
           Clock::now() < deadline) {
        takeReports(deadline);
    }
    return state_.canRead();
}

RecognizerState RecognizerProcess::state() {
    if (const std::unique_lock lock(mutex_, std::try_to_lock); lock) {
        startAgainWhenDue();
        if (worker_) {
            takeReports(Clock::now());
        }
        const std::lock_guard known(knownMutex_);
        known_ = state_;
    }
    const std::lock_guard known(knownMutex_);
    return known_;
}

pid_t RecognizerProcess::processId() {
    const std::lock_guard lock(mutex_);
    return worker_ ? worker_->id() : -1;
}

std::optional<LineReading> RecognizerProcess::read(const GrayImage& line, ScriptModel model) {
    if (!fitsMessage(line)) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    const std::optional<RecognizerMessage> reply = ask(makeReadLine({model, line}));
    return reply ? parseReading(*reply) : std::nullopt;
}

bool RecognizerProcess::begin(const GrayImage& line, ScriptModel model) {
    // On a single core it would only be in the way of what is asked next.
    if (!fitsMessage(line) || std::thread::hardware_concurrency() < 2) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    if (!ensureWorker()) {
        return false;
    }
    RecognizerMessage request = makeBeginLine({model, line});
    request.sequence = ++sequence_;  // By which the worker tidies up now and then.
    if (!sendAll(request, Clock::now() + options_.answerLimit)) {
        workerFailed();
        return false;
    }
    return true;
}

std::optional<GrayImage> RecognizerProcess::drawCharacter(char32_t character, ScriptModel style) {
    const std::lock_guard lock(mutex_);
    const std::optional<RecognizerMessage> reply =
        ask(makeDrawCharacter({character, style, drawingSize}));
    return reply ? parsePicture(*reply) : std::nullopt;
}

std::optional<MatchedCells> RecognizerProcess::matchCells(const CellsToMatch& request) {
    if (request.strip.isEmpty() || request.strip.width() > RecognizerMessage::greatestWidth ||
        request.strip.height() > RecognizerMessage::greatestHeight ||
        request.strip.pixels().size() > RecognizerMessage::greatestBody / 2) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    if (glyphs_.empty() || !ensureWorker()) {
        return std::nullopt;
    }
    if (!workerKnowsGlyphs_) {
        const auto reply = ask(makeKnowGlyphs({options_.glyphFolder, glyphs_}));
        workerKnowsGlyphs_ = reply && reply->kind == Kind::understood;
    }
    const std::optional<RecognizerMessage> reply = ask(makeMatchCells(request));
    std::optional<MatchedCells> matches = reply ? parseMatches(*reply) : std::nullopt;
    return matches && matches->cells.size() == request.cells.size() ? std::move(matches)
                                                                    : std::nullopt;
}

void RecognizerProcess::setGlyphs(std::vector<char32_t> characters) {
    const std::lock_guard lock(mutex_);
    glyphs_ = std::move(characters);
    workerKnowsGlyphs_ = false;
}

/// Sends a request and waits for its answer; nothing where the worker is not ready or fails.
std::optional<RecognizerMessage> RecognizerProcess::ask(RecognizerMessage request) {
    if (!ensureWorker()) {
        return std::nullopt;
    }
    const Instant deadline = Clock::now() + options_.answerLimit;
    request.sequence = ++sequence_;
    std::optional<RecognizerMessage> reply;
    if (sendAll(request, deadline)) {
        reply = receive(deadline);
    }
    if (!reply || reply->sequence != request.sequence) {
        workerFailed();
        return std::nullopt;
    }
    failuresInARow_ = 0;
    return reply;
}

bool RecognizerProcess::sendAll(const RecognizerMessage& message, Instant deadline) {
    const std::vector<std::uint8_t> bytes = encodeMessage(message);
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        if (!waitFor(worker_->socket(), POLLOUT, deadline)) {
            return false;
        }
        const ssize_t count = ::send(worker_->socket(), bytes.data() + sent, bytes.size() - sent,
                                     MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count > 0) {
            sent += static_cast<std::size_t>(count);
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            return false;
        }
    }
    return true;
}

std::optional<RecognizerMessage> RecognizerProcess::receive(Instant deadline) {
    std::array<std::uint8_t, RecognizerMessage::headerSize> header{};
    if (!receiveAll(header.data(), header.size(), deadline)) {
        return std::nullopt;
    }
    std::optional<RecognizerMessage> message = decodeHeader(header);
    if (!message || !receiveAll(message->body.data(), message->body.size(), deadline)) {
        return std::nullopt;
    }
    return message;
}

bool RecognizerProcess::receiveAll(std::uint8_t* data, std::size_t size, Instant deadline) {
    while (size > 0) {
        if (!waitFor(worker_->socket(), POLLIN, deadline)) {
            return false;
        }
        const ssize_t count = ::recv(worker_->socket(), data, size, MSG_DONTWAIT);
        if (count > 0) {
            data += count;
            size -= static_cast<std::size_t>(count);
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            return false;
        }
    }
    return true;
}

}  // namespace velmora
