// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/SettingsFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

#include "Velmora/Platform/Linux/XdgPaths.h"
#include "Velmora/Platform/SettingsText.h"

namespace velmora {

namespace {

constexpr off_t largestFile = 1 << 20;

struct KeyPlace {
    std::string_view group;
    std::string_view name;
};

KeyPlace placeOf(std::string_view key) {
    const std::size_t slash = key.find('/');
    if (slash == std::string_view::npos) {
        return {"General", key};
    }
    return {key.substr(0, slash), key.substr(slash + 1)};
}

/// The whole of an ordinary file of acceptable size; nothing otherwise.
std::optional<std::string> contents(const std::filesystem::path& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) {
        return std::nullopt;
    }
    struct stat status {};
    std::optional<std::string> text;
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_size <= largestFile) {
        text.emplace(static_cast<std::size_t>(status.st_size), '\0');
        const ssize_t got = ::read(descriptor, text->data(), text->size());
        if (got < 0) {
            text.reset();
        } else {
            text->resize(static_cast<std::size_t>(got));
        }
    }
    ::close(descriptor);
    return text;
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
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

}  // namespace

SettingsFile::SettingsFile(std::optional<std::filesystem::path> path) : path_(std::move(path)) {
    read();
}

std::optional<std::filesystem::path> SettingsFile::standardPath() {
    const auto folder = xdg::configHome();
    return folder ? std::optional(*folder / "Velmora" / "Velmora.conf") : std::nullopt;
}

void SettingsFile::read() {
    if (!path_) {
        return;
    }
    std::error_code error;
    if (!std::filesystem::exists(*path_, error) && !error) {
        return;
    }
    // The file that a link leads to is the one to replace later.
    if (const auto real = std::filesystem::canonical(*path_, error); !error) {
        path_ = real;
    }
    const auto text = contents(*path_);
    if (!text || ::access(path_->c_str(), W_OK) != 0) {
        path_.reset();
    }
    document_ = IniDocument(text.value_or(std::string()));
}

std::optional<std::string> SettingsFile::text(const std::string& key) const {
    const KeyPlace place = placeOf(key);
    return document_.value(place.group, place.name);
}

std::optional<bool> SettingsFile::boolean(const std::string& key) const {
    const auto value = text(key);
    return value ? std::optional(settingAsBoolean(*value)) : std::nullopt;
}

std::optional<double> SettingsFile::number(const std::string& key) const {
    const auto value = text(key);
    return value ? std::optional(settingAsNumber(*value)) : std::nullopt;
}

void SettingsFile::setBoolean(const std::string& key, bool value) {
    setText(key, value ? "true" : "false");
}

void SettingsFile::setNumber(const std::string& key, double value) {
    setText(key, settingFromNumber(value));
}

void SettingsFile::setText(const std::string& key, const std::string& value) {
    const KeyPlace place = placeOf(key);
    document_.setValue(place.group, place.name, value);
    write();
}

void SettingsFile::write() const {
    if (!path_) {
        return;
    }
    std::error_code ignored;
    std::filesystem::create_directories(path_->parent_path(), ignored);
    std::string temporary = path_->string() + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return;
    }
    struct stat status {};
    if (::stat(path_->c_str(), &status) == 0) {
        [[maybe_unused]] const int result = ::fchmod(descriptor, status.st_mode & 0777U);
    }
    const bool written = writeAll(descriptor, document_.text());
    const bool closed = ::close(descriptor) == 0;
    if (!written || !closed || std::rename(temporary.c_str(), path_->c_str()) != 0) {
        ::unlink(temporary.c_str());
    }
}

}  // namespace velmora
