// SPDX-License-Identifier: MIT
// The recognition worker. It reads single lines for the program that started it, over a socket on
// descriptor 3, and ends with it. What Tesseract does to a strange picture stays in here.
#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <utility>

#include "Velmora/Platform/Linux/Tesseract/Worker/CharacterPainter.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/Companion.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/GlyphLibrary.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/MessagePipe.h"
#include "Velmora/Platform/Linux/Tesseract/Worker/ScriptReaders.h"

namespace {

using namespace velmora;
using Kind = RecognizerMessage::Kind;

constexpr int connection = 3;
constexpr std::chrono::seconds longestRequest{5};
constexpr std::uint32_t requestsBetweenTrims = 64;
constexpr std::chrono::milliseconds restBeforeTrim{150};
constexpr rlim_t greatestMemory = rlim_t{1} << 30;

/// One thread is seven times faster than the default, and the OpenMP library reads its limit once,
/// when it is loaded: before main. So start again where the limit is not set yet.
void requireSingleThread(char** arguments) {
    const char* limit = std::getenv("OMP_THREAD_LIMIT");
    if (limit == nullptr || std::strcmp(limit, "1") != 0) {
        ::setenv("OMP_THREAD_LIMIT", "1", 1);
        ::execv("/proc/self/exe", arguments);
    }
}

/// Captures never reach a disk: a core limit of 1 is the one that also keeps a crash from being
/// piped to a collector. Memory is bounded, and nothing is said on the terminal.
void confine() {
    const rlimit core{1, 1};
    ::setrlimit(RLIMIT_CORE, &core);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    const rlimit memory{greatestMemory, greatestMemory};
    ::setrlimit(RLIMIT_AS, &memory);
#endif
    const int nowhere = ::open("/dev/null", O_RDWR);
    if (nowhere >= 0) {
        for (int descriptor = 0; descriptor <= 2; ++descriptor) {
            ::dup2(nowhere, descriptor);
        }
        if (nowhere > 2 && nowhere != connection) {
            ::close(nowhere);
        }
    }
}

class Worker {
  public:
    Worker() : pipe_(connection) {}

    bool load(const std::string& dataFolder, const std::string& withoutModels) {
        for (const ScriptModel model : {ScriptModel::simplified, ScriptModel::traditional}) {
            const auto index = static_cast<std::size_t>(model);
            ModelState state = ModelState::damaged;
            if (withoutModels.find(static_cast<char>('0' + index)) == std::string::npos) {
                if (!report(Kind::loading, model, ModelState::loading)) {
                    return false;
                }
                state = readers_.load(dataFolder, model);
            }
            if (!report(Kind::loaded, model, state)) {
                return false;
            }
        }
        ::malloc_trim(0);
        return pipe_.send({Kind::ready, 0, {}});
    }

    void serve() {
        while (std::optional<RecognizerMessage> request = pipe_.receive()) {
            if (auto line = parseBeginLine(*request)) {
                readers_.begin(std::move(*line));
            } else if (!reply(*request)) {
                return;
            }
            // What a line took goes back to the system when nobody asks for the next one, and now
            // and then while somebody does.
            if (!pipe_.waitsFor(restBeforeTrim)) {
                if (!companion_.awaitRest(longestRequest)) {
                    return;
                }
                glyphs_.rest();
                ::malloc_trim(0);
            } else if (request->sequence % requestsBetweenTrims == 0) {
                ::malloc_trim(0);
            }
        }
    }

  private:
    bool report(Kind kind, ScriptModel model, ModelState state) {
        return pipe_.send(makeModelReport(kind, {model, state}));
    }

    /// False once the program is gone.
    bool reply(const RecognizerMessage& request) {
        // Should this hang after the program has gone, nobody else would end it.
        ::alarm(static_cast<unsigned>(longestRequest.count()));
        RecognizerMessage reply = answer(request);
        ::alarm(0);
        reply.sequence = request.sequence;
        return pipe_.send(reply);
    }

    RecognizerMessage answer(const RecognizerMessage& request) {
        if (const auto line = parseReadLine(request)) {
            const auto reading = readers_.read(*line);
            return reading ? makeReading(*reading) : RecognizerMessage{};
        }
        if (const auto drawing = parseDrawCharacter(request)) {
            const auto picture = painter_.draw(drawing->character, drawing->style, drawing->size);
            return picture ? makePicture(*picture) : RecognizerMessage{};
        }
        if (auto glyphs = parseKnowGlyphs(request)) {
            glyphs_.know(std::move(*glyphs));
            return {Kind::understood, 0, {}};
        }
        if (const auto cells = parseMatchCells(request)) {
            const auto matches = glyphs_.match(*cells);
            return matches ? makeMatches(*matches) : RecognizerMessage{};
        }
        return {};
    }

    MessagePipe pipe_;
    Companion companion_{Companion::isWorthwhile()};
    ScriptReaders readers_{companion_};
    CharacterPainter painter_;
    GlyphLibrary glyphs_{companion_};
};

}  // namespace

/// Arguments: the folder of the language data, and the digits of models that are not to be loaded
/// because loading them has crashed.
int main(int count, char** arguments) {
    struct stat status {};
    if (count != 3 || ::fstat(connection, &status) != 0 || !S_ISSOCK(status.st_mode)) {
        static constexpr char explanation[] =
            "velmora-recognizer is started by velmora and does nothing on its own.\n";
        return ::write(STDERR_FILENO, explanation, sizeof(explanation) - 1) < 0 ? 1 : 2;
    }
    requireSingleThread(arguments);
    // Each thread's own share of the heap would keep what the other one could use.
    ::mallopt(M_ARENA_MAX, 1);
    confine();
    Worker worker;
    if (worker.load(arguments[1], arguments[2])) {
        worker.serve();
    }
    // The engines' memory goes with the process; taking it apart first only takes time.
    ::_exit(0);
}
