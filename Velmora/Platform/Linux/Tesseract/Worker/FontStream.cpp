// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/FontStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

namespace {

unsigned long readFont(FT_Stream stream, unsigned long offset, unsigned char* buffer,
                       unsigned long count) {
    if (count == 0) {  // A seek, which may fail where nothing is left to read.
        return offset > stream->size ? 1 : 0;
    }
    const auto descriptor = static_cast<int>(stream->descriptor.value);
    const ssize_t read = ::pread(descriptor, buffer, count, static_cast<off_t>(offset));
    return read < 0 ? 0 : static_cast<unsigned long>(read);
}

void closeFont(FT_Stream stream) {
    ::close(static_cast<int>(stream->descriptor.value));
}

}  // namespace

FT_Face FontStream::open(FT_Library library, const std::string& path, int index) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (descriptor < 0) {
        return nullptr;
    }
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return nullptr;
    }
    stream_ = {};
    stream_.size = static_cast<unsigned long>(status.st_size);
    stream_.descriptor.value = descriptor;
    stream_.read = readFont;
    stream_.close = closeFont;
    FT_Open_Args arguments{};
    arguments.flags = FT_OPEN_STREAM;
    arguments.stream = &stream_;
    FT_Face face = nullptr;
    return FT_Open_Face(library, &arguments, index, &face) == 0 ? face : nullptr;
}

}  // namespace velmora
