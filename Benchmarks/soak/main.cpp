// SPDX-License-Identifier: MIT
// Reads pictures, tells what memory that leaves in use, then does it again with a worker that is
// killed and stopped now and then and tells the longest that one answer took.
//
//   benchmark_soak [--recognitions N] [--faults N]
//
// Exit status 1 where the memory grew or an answer took longer than it may.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <thread>

#include "Benchmarks/soak/ProcessMemory.h"
#include "Benchmarks/soak/SoakPictures.h"
#include "Velmora/Platform/Linux/Tesseract/TesseractRecognizer.h"

namespace velmora::benchmark {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double mostGrowthMegabytes = 6;
constexpr int reports = 10;
constexpr auto loadingPatience = std::chrono::seconds(60);

/// One line may take this long; a picture has two lines near the pointer, read in two ways, and
/// whoever fails is not asked again.
constexpr double longestAnswerMilliseconds = 2500;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

struct Memory {
    double own = 0;
    double worker = 0;
};

Memory memoryNow(const TesseractRecognizer& recognizer) {
    return {residentMegabytes(::getpid()), residentMegabytes(recognizer.workerProcessId())};
}

/// Whether both processes are about as large at the end as when they had settled.
bool staysFlat(TesseractRecognizer& recognizer, int count) {
    SoakPictures pictures;
    Memory settled;
    Memory last;
    int answers = 0;
    std::puts("| recognitions | answered | own memory | worker's memory |\n|--:|--:|--:|--:|");
    for (int i = 1; i <= count; ++i) {
        const SoakPictures::Shown shown = pictures.next();
        answers += recognizer.recognize(shown.image, shown.pointer, 3) ? 1 : 0;
        if (i % std::max(1, count / reports) == 0) {
            last = memoryNow(recognizer);
            settled = i <= count / 5 ? last : settled;
            std::printf("| %d | %d | %.1f MB | %.1f MB |\n", i, answers, last.own, last.worker);
            std::fflush(stdout);
        }
    }
    return last.own - settled.own <= mostGrowthMegabytes &&
           last.worker - settled.worker <= mostGrowthMegabytes;
}

/// The longest answer while the worker is killed or stopped in the middle, in milliseconds.
double longestUnderFaults(TesseractRecognizer& recognizer, int count) {
    SoakPictures pictures;
    double longest = 0;
    for (int i = 0; i < count; ++i) {
        recognizer.waitUntilReady(loadingPatience);
        const pid_t worker = recognizer.workerProcessId();
        std::thread fault([worker, i] {
            std::this_thread::sleep_for(std::chrono::milliseconds(i % 40));
            if (worker > 0) {
                ::kill(worker, i % 3 == 0 ? SIGSTOP : i % 3 == 1 ? SIGKILL : SIGSEGV);
            }
        });
        const SoakPictures::Shown shown = pictures.next();
        const auto start = Clock::now();
        recognizer.recognize(shown.image, shown.pointer, 3);
        longest = std::max(longest, millisecondsSince(start));
        fault.join();
        // What the fault came too late for is found out by the next one.
        const SoakPictures::Shown next = pictures.next();
        const auto again = Clock::now();
        recognizer.recognize(next.image, next.pointer, 3);
        longest = std::max(longest, millisecondsSince(again));
    }
    return longest;
}

int run(int recognitions, int faults) {
    TesseractRecognizer recognizer({});
    recognizer.start();
    if (!recognizer.waitUntilReady(loadingPatience)) {
        std::fprintf(stderr, "benchmark_soak: %s\n", recognizer.state().description().c_str());
        return EXIT_FAILURE;
    }
    const auto start = Clock::now();
    bool fine = staysFlat(recognizer, recognitions);
    std::printf("\n%d recognitions in %.0f s.\n", recognitions, millisecondsSince(start) / 1000);
    if (faults > 0) {
        const double longest = longestUnderFaults(recognizer, faults);
        std::printf(
            "With the worker stopped, killed or crashed %d times: longest answer %.0f ms.\n",
            faults, longest);
        fine = fine && longest <= longestAnswerMilliseconds;
    }
    return fine ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace velmora::benchmark

int main(int count, char** values) {
    int recognitions = 2000;
    int faults = 60;
    for (int i = 1; i + 1 < count; i += 2) {
        const std::string name = values[i];
        (name == "--faults" ? faults : recognitions) = std::atoi(values[i + 1]);
    }
    try {
        return velmora::benchmark::run(recognitions, faults);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchmark_soak: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
