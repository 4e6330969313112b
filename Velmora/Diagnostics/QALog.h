// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Velmora/Diagnostics/LookupRecording.h"
#include "Velmora/Platform/Clock.h"
#include "Velmora/Platform/SerialQueue.h"

namespace velmora {

/// A file with one JSON object per hover, for checking the quality of text capture and lookup. Off
/// unless the environment switches it on. The file stays on this machine and only its owner can
/// read it; it holds the looked-up texts. Every failure is swallowed.
class QALog final : public LookupRecording {
  public:
    struct Configuration {
        bool isEnabled = false;
        std::filesystem::path path;

        /// `variable` gives an environment variable or nothing; `dataFolder` is the user's folder
        /// for program data, nothing where it cannot be told.
        static Configuration fromEnvironment(
            const std::function<std::optional<std::string>(const char*)>& variable,
            const std::optional<std::filesystem::path>& dataFolder);
    };

    /// Makes the queue with this label, on which all writing happens.
    using QueueFactory = std::function<std::unique_ptr<SerialQueue>(const std::string& label)>;

    static constexpr const char* queueLabel = "com.velmora.qa-log";

    /// No queue is made while the log is off. The clock outlives this object.
    QALog(Configuration configuration, Clock& clock, const QueueFactory& makeQueue);
    QALog(const QALog&) = delete;
    QALog& operator=(const QALog&) = delete;

    /// Waits until what was handed over is written.
    ~QALog() override;

    bool isEnabled() const { return queue_ != nullptr; }
    const std::filesystem::path& path() const { return configuration_.path; }

    /// Callable from any thread. Records holding a number that is not finite are dropped.
    void record(const LookupRecord& record) override;

  private:
    class File;

    Configuration configuration_;
    Clock& clock_;
    std::shared_ptr<File> file_;  // Touched on the queue only.
    std::unique_ptr<SerialQueue> queue_;
};

}  // namespace velmora
