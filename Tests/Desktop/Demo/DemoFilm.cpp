// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Demo/DemoFilm.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <cmath>
#include <fstream>
#include <stdexcept>

#include "Tests/Desktop/Demo/ScreenPicture.h"

namespace velmora::test {

namespace {

/// A keycap in the lower right corner.
void drawKey(QImage& picture, const std::string& name, double scale) {
    QFont font;
    font.setPixelSize(static_cast<int>(std::lround(14 * scale)));
    font.setWeight(QFont::DemiBold);
    const QString text = QString::fromStdString(name);
    const double margin = 18 * scale;
    const double height = 34 * scale;
    const double width = QFontMetricsF(font).horizontalAdvance(text) + 26 * scale;
    const QRectF cap(picture.width() - margin - width, picture.height() - margin - height, width,
                     height);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0xc4, 0xc4, 0xcc), scale));
    painter.setBrush(QColor(0xd4, 0xd4, 0xdb));
    painter.drawRoundedRect(cap.translated(0, 2.5 * scale), 7 * scale, 7 * scale);
    painter.setBrush(QColor(0xfb, 0xfb, 0xfd));
    painter.drawRoundedRect(cap, 7 * scale, 7 * scale);
    painter.setPen(QColor(0x1c, 0x1c, 0x1f));
    painter.setFont(font);
    painter.drawText(cap, Qt::AlignCenter, text);
}

}  // namespace

void DemoFilm::add(const QImage& screen, Point pointer, const std::string& heldKey,
                   double seconds) {
    if (!frames_.empty()) {
        Frame& last = frames_.back();
        const bool sameScreen =
            last.screen.constBits() == screen.constBits() || last.screen == screen;
        if (sameScreen && last.pointer == pointer && last.heldKey == heldKey) {
            last.seconds += seconds;
            return;
        }
        frames_.push_back({sameScreen ? last.screen : screen, pointer, heldKey, seconds});
        return;
    }
    frames_.push_back({screen, pointer, heldKey, seconds});
}

double DemoFilm::seconds() const {
    double sum = 0;
    for (const Frame& frame : frames_) {
        sum += frame.seconds;
    }
    return sum;
}

QImage DemoFilm::drawn(const Frame& frame) const {
    QImage picture = frame.screen.copy();
    if (!frame.heldKey.empty()) {
        drawKey(picture, frame.heldKey, scale_);
    }
    drawPointer(picture, frame.pointer, scale_);
    return picture;
}

void DemoFilm::write(const std::filesystem::path& folder) const {
    std::filesystem::create_directories(folder);
    std::ofstream list(folder / "frames.txt");
    std::size_t number = 0;
    for (const Frame& frame : frames_) {
        const std::string name = "frame-" + std::to_string(10000 + number++) + ".png";
        if (!drawn(frame).save(QString::fromStdString((folder / name).string()), "PNG", 90)) {
            throw std::runtime_error("cannot write " + (folder / name).string());
        }
        list << "file '" << name << "'\nduration " << frame.seconds << "\n";
    }
    if (!list.flush()) {
        throw std::runtime_error("cannot write " + (folder / "frames.txt").string());
    }
}

}  // namespace velmora::test
