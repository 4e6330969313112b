// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recorded/RecordingFolder.h"

#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QSaveFile>
#include <QString>
#include <cstring>
#include <utility>
#include <vector>

#include "Velmora/Platform/Recorded/RecordingText.h"

namespace velmora {

namespace {

constexpr const char* textName = "recording.json";

QString qtPath(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

std::optional<Image> readPicture(const std::filesystem::path& path) {
    QImageReader reader(qtPath(path), "png");
    const QSize size = reader.size();
    if (!size.isValid() ||
        static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) >
            Recording::mostPixels) {
        return std::nullopt;
    }
    const QImage picture = reader.read().convertToFormat(QImage::Format_ARGB32);
    if (picture.isNull()) {
        return std::nullopt;
    }
    const auto width = static_cast<std::size_t>(picture.width());
    std::vector<std::uint32_t> pixels(width * static_cast<std::size_t>(picture.height()));
    for (int y = 0; y < picture.height(); ++y) {
        std::memcpy(pixels.data() + static_cast<std::size_t>(y) * width, picture.constScanLine(y),
                    width * sizeof(std::uint32_t));
    }
    return Image(picture.width(), picture.height(), std::move(pixels));
}

/// Writes a file as a whole or not at all, for the user alone.
template <typename Write>
bool writeFile(const std::filesystem::path& path, const Write& write) {
    QSaveFile file(qtPath(path));
    return file.open(QIODevice::WriteOnly) &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && write(file) &&
           file.commit();
}

bool writePicture(const Image& image, const std::filesystem::path& path) {
    QImage picture(image.width(), image.height(), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(picture.scanLine(y), image.row(y),
                    static_cast<std::size_t>(image.width()) * sizeof(std::uint32_t));
    }
    return writeFile(path, [&](QSaveFile& file) { return picture.save(&file, "PNG"); });
}

RecordingFolder::Loaded failure(const std::filesystem::path& path, const char* why) {
    return {nullptr, path.string() + ": " + why};
}

}  // namespace

RecordingFolder::Loaded RecordingFolder::load(const std::filesystem::path& folder) {
    const std::filesystem::path textPath = folder / textName;
    QFile file(qtPath(textPath));
    if (!file.open(QIODevice::ReadOnly)) {
        return failure(textPath, "cannot be read");
    }
    const QByteArray text = file.read(static_cast<qint64>(Recording::mostBytes) + 1);
    auto recording = parseRecording({text.constData(), static_cast<std::size_t>(text.size())});
    if (!recording) {
        return failure(textPath, "not a recording");
    }
    std::size_t pixels = 0;
    for (std::size_t index = 0; index < recording->captures.size(); ++index) {
        auto& capture = recording->captures[index];
        if (!capture.image) {
            continue;
        }
        const std::filesystem::path path = folder / capturePictureName(index);
        capture.image = readPicture(path);
        if (!capture.image) {
            return failure(path, "not a picture of believable size");
        }
        pixels += static_cast<std::size_t>(capture.image->width()) *
                  static_cast<std::size_t>(capture.image->height());
        if (pixels > Recording::mostPixels) {
            return failure(folder, "too many pictures");
        }
    }
    return {std::make_shared<const Recording>(std::move(*recording)), {}};
}

std::optional<std::string> RecordingFolder::save(const Recording& recording,
                                                 const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        return folder.string() + ": " + error.message();
    }
    for (std::size_t index = 0; index < recording.captures.size(); ++index) {
        const auto& image = recording.captures[index].image;
        const std::filesystem::path path = folder / capturePictureName(index);
        if (image && !writePicture(*image, path)) {
            return path.string() + ": cannot be written";
        }
    }
    const std::filesystem::path textPath = folder / textName;
    const std::string text = recordingText(recording);
    const bool written = writeFile(textPath, [&](QSaveFile& file) {
        return file.write(text.data(), static_cast<qint64>(text.size())) ==
               static_cast<qint64>(text.size());
    });
    return written ? std::nullopt : std::optional(textPath.string() + ": cannot be written");
}

}  // namespace velmora
