// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/PictureFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QImageReader>
#include <QString>
#include <cstring>
#include <utility>
#include <vector>

#include "Velmora/CommandLine/Core/TextLayout.h"
#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {

namespace {

constexpr long long mebi = 1024LL * 1024;

/// Keeps what decoders write to standard error about broken files away from there: the command
/// says it once. They write past the toolkit's message handler.
class SilentDecoders {
  public:
    SilentDecoders() : before_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (before_ >= 0 && nowhere >= 0) {
            ::dup2(nowhere, STDERR_FILENO);
        }
        if (nowhere >= 0) {
            ::close(nowhere);
        }
    }
    SilentDecoders(const SilentDecoders&) = delete;
    SilentDecoders& operator=(const SilentDecoders&) = delete;
    ~SilentDecoders() {
        if (before_ >= 0) {
            ::dup2(before_, STDERR_FILENO);
            ::close(before_);
        }
    }

  private:
    int before_;
};

/// The picture's transparent parts shown over white.
QImage opaque(const QImage& picture) {
    QImage result = picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                                      : QImage::Format_RGB32);
    if (!picture.hasAlphaChannel()) {
        return result;
    }
    for (int y = 0; y < result.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const int alpha = qAlpha(row[x]);
            const auto over = [alpha](int value) {
                return (value * alpha + 255 * (255 - alpha) + 127) / 255;
            };
            row[x] = qRgb(over(qRed(row[x])), over(qGreen(row[x])), over(qBlue(row[x])));
        }
    }
    return std::move(result).convertToFormat(QImage::Format_RGB32);
}

}  // namespace

QImage readPicture(const std::string& path) {
    const SilentDecoders silence;
    constexpr int megabytes = static_cast<int>(largestPicture * 4 / mebi);
    QImageReader::setAllocationLimit(megabytes + 1);
    QImageReader reader(QFile::decodeName(QByteArray::fromStdString(path)));
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (size.isValid() && static_cast<long long>(size.width()) * size.height() > largestPicture) {
        throw UsageError(printable(path) + ": more than " + std::to_string(largestPicture / mebi) +
                         " megapixels");
    }
    const QImage picture = reader.read();
    if (picture.isNull()) {
        throw UsageError(printable(path) + ": " + reader.errorString().toStdString());
    }
    return opaque(picture);
}

Image imageOf(const QImage& picture) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(picture.width()) *
                                      static_cast<std::size_t>(picture.height()));
    const std::size_t rowBytes = static_cast<std::size_t>(picture.width()) * sizeof(std::uint32_t);
    for (int y = 0; y < picture.height(); ++y) {
        std::memcpy(
            pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width()),
            picture.constScanLine(y), rowBytes);
    }
    return {picture.width(), picture.height(), std::move(pixels)};
}

}  // namespace velmora
