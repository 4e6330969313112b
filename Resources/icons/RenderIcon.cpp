// SPDX-License-Identifier: MIT
// Draws an SVG picture in one size: RenderIcon IN.svg SIZE OUT.png. Part of the build; not
// installed.
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
    constexpr int largest = 1024;
    const int size = argumentCount == 4 ? std::atoi(arguments[2]) : 0;
    if (size < 1 || size > largest) {
        std::fprintf(stderr, "usage: RenderIcon IN.svg SIZE OUT.png\n");
        return 2;
    }
    QSvgRenderer picture(QString::fromLocal8Bit(arguments[1]));
    if (!picture.isValid()) {
        std::fprintf(stderr, "%s is no picture\n", arguments[1]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(arguments[3]), "PNG")) {
        std::fprintf(stderr, "%s cannot be written\n", arguments[3]);
        return 1;
    }
    return 0;
}
