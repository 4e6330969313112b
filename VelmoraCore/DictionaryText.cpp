// SPDX-License-Identifier: MIT
#include "VelmoraCore/DictionaryText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "VelmoraCore/Utf8.h"
#include "VelmoraCore/Utf8Scan.h"

namespace velmora {
namespace {

class FileDescriptor {
  public:
    explicit FileDescriptor(int value) : value_(value) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (value_ >= 0) {
            close(value_);
        }
    }
    int value() const { return value_; }

  private:
    int value_;
};

/// Reads up to `size` bytes; fewer where the file has become shorter, nothing on an error.
std::optional<std::size_t> readBytes(int file, char* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(file, bytes + done, size - done);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

/// The file's bytes; nothing where they cannot be had.
std::optional<std::pair<MemoryBlock, std::size_t>> readFile(const std::string& path,
                                                            DictionaryError& error) {
    // Without O_NONBLOCK a named pipe that nobody writes to would hold us here for good.
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.value() < 0) {
        error = errno == ENOENT ? DictionaryError::missing : DictionaryError::unreadable;
        return std::nullopt;
    }
    error = DictionaryError::unreadable;
    struct stat status {};
    if (fstat(file.value(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size < 0 ||
        static_cast<std::size_t>(status.st_size) > DictionaryText::maxFileSize) {
        return std::nullopt;
    }
    try {
        MemoryBlock bytes(static_cast<std::size_t>(status.st_size));
        const auto size = readBytes(file.value(), static_cast<char*>(bytes.data()), bytes.size());
        if (!size) {
            return std::nullopt;
        }
        return std::pair(std::move(bytes), *size);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace

DictionaryText::DictionaryText(std::string_view text) {
    const std::string repaired = isValidUtf8(text) ? std::string() : repairedUtf8(text);
    const std::string_view valid = repaired.empty() ? text : std::string_view(repaired);
    bytes_ = MemoryBlock(valid.size());
    size_ = valid.size();
    std::copy(valid.begin(), valid.end(), static_cast<char*>(bytes_.data()));
    skipByteOrderMark();
}

std::optional<DictionaryText> DictionaryText::read(const std::string& path,
                                                   DictionaryError& error) {
    auto bytes = readFile(path, error);
    if (!bytes) {
        return std::nullopt;
    }
    DictionaryText text;
    text.bytes_ = std::move(bytes->first);
    text.size_ = bytes->second;
    const Utf8Scan scan = Utf8Scan::of(text.text());
    text.hasRareLineEnds_ = scan.hasRareLineEnds;
    if (!scan.valid) {
        error = DictionaryError::notUtf8;
        return std::nullopt;
    }
    text.skipByteOrderMark();
    return text;
}

void DictionaryText::skipByteOrderMark() {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text().substr(0, mark.size()) == mark) {
        start_ = mark.size();
        size_ -= mark.size();
    }
}

}  // namespace velmora
