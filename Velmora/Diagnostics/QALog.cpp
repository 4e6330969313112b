// SPDX-License-Identifier: MIT
#include "Velmora/Diagnostics/QALog.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <nlohmann/json.hpp>
#include <string_view>
#include <system_error>
#include <utility>

#include "Velmora/Diagnostics/QALogRecord.h"

namespace velmora {

/// The open file; opened by the first write.
class QALog::File {
  public:
    explicit File(std::filesystem::path path) : path_(std::move(path)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }

    void append(std::string_view line) {
        if (!opened_) {
            opened_ = true;
            open();
        }
        if (descriptor_ < 0) {
            return;
        }
        const off_t end = ::lseek(descriptor_, 0, SEEK_END);
        if (!writeAll(line) && end >= 0) {
            // Half a line would spoil the next one too; a disk that is full can still be shortened.
            [[maybe_unused]] const int result = ::ftruncate(descriptor_, end);
        }
    }

  private:
    void open() {
        std::error_code ignored;
        std::filesystem::create_directories(path_.parent_path(), ignored);
        // Without blocking: a pipe that nobody reads must not hold the program up.
        descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK,
                             S_IRUSR | S_IWUSR);
    }

    bool writeAll(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) {
                continue;
            }
            if (written <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

    std::filesystem::path path_;
    bool opened_ = false;
    int descriptor_ = -1;
};

QALog::Configuration QALog::Configuration::fromEnvironment(
    const std::function<std::optional<std::string>(const char*)>& variable,
    const std::optional<std::filesystem::path>& dataFolder) {
    Configuration configuration;
    configuration.isEnabled = variable("VELMORA_QA_LOG") == "1";
    const auto given = variable("VELMORA_QA_LOG_PATH");
    if (given && !given->empty()) {
        configuration.path = *given;
    } else if (dataFolder && !dataFolder->empty()) {
        configuration.path = *dataFolder / "Velmora" / "qa-log.jsonl";
    } else {
        std::error_code error;
        const auto temporary = std::filesystem::temp_directory_path(error);
        configuration.path =
            (error ? std::filesystem::path("/tmp") : temporary) / "velmora-qa-log.jsonl";
    }
    return configuration;
}

QALog::QALog(Configuration configuration, Clock& clock, const QueueFactory& makeQueue)
    : configuration_(std::move(configuration)),
      clock_(clock),
      file_(std::make_shared<File>(configuration_.path)),
      queue_(configuration_.isEnabled ? makeQueue(queueLabel) : nullptr) {}

QALog::~QALog() = default;

void QALog::record(const LookupRecord& record) {
    if (!isEnabled()) {
        return;
    }
    auto object = qaLogObject(record, clock_.wallTime());
    if (!object) {
        return;
    }
    queue_->async([file = file_, line = std::move(*object)] {
        try {
            file->append(line.dump() + "\n");
        } catch (const nlohmann::json::exception&) {
            // A text that is not UTF-8 cannot stand in the log.
        }
    });
}

}  // namespace velmora
