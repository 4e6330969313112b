// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/Annotation.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QString>

#include "Velmora/CommandLine/Application/ProbeJson.h"

namespace velmora {

namespace {

const QColor lineColour(0, 90, 220);
const QColor cellColour(0, 150, 60);
const QColor anchorColour(220, 30, 30);

QRectF frameOf(const Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

void drawLabel(QPainter& painter, const Rect& line, const RecognizedText& reading) {
    // Without an application object there are no fonts.
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return;
    }
    QFont font = painter.font();
    font.setPixelSize(11);
    painter.setFont(font);
    const QString text = QString::number(static_cast<double>(reading.confidence()), 'f', 2) +
                         QLatin1Char(' ') + QString::fromStdString(reading.string());
    QRectF box = painter.boundingRect(QRectF(), Qt::AlignLeft, text).adjusted(-2, -1, 2, 1);
    box.moveBottomLeft({line.x, line.y - 1});
    if (box.top() < 0) {
        box.moveTop(line.maxY() + 1);
    }
    painter.fillRect(box, QColor(255, 255, 255, 225));
    painter.setPen(lineColour);
    painter.drawText(box, Qt::AlignCenter, text);
}

void drawLine(QPainter& painter, const TextObservation& line, const RegionGeometry& geometry) {
    const Rect box = lineRect(line, geometry);
    if (!box.isFinite()) {
        return;
    }
    painter.setPen(QPen(lineColour, 1));
    painter.drawRect(frameOf(box));
    if (line.candidates.empty()) {
        return;
    }
    painter.setPen(QPen(cellColour, 1));
    for (const auto& cell : characterRects(*line.candidates.front(), geometry)) {
        if (cell) {
            painter.drawRect(frameOf(*cell));
        }
    }
    drawLabel(painter, box, *line.candidates.front());
}

}  // namespace

QImage annotated(const QImage& picture, const Recognition& recognition) {
    QImage result = picture.copy();
    QPainter painter(&result);
    for (const TextObservation& line : recognition.lines) {
        drawLine(painter, line, recognition.geometry);
    }
    if (recognition.anchor) {
        painter.setPen(QPen(anchorColour, 2));
        painter.drawRect(frameOf(*recognition.anchor));
    }
    return result;
}

}  // namespace velmora
