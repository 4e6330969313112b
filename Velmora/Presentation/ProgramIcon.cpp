// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/ProgramIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace velmora {

QIcon drawProgramIcon() {
    QSvgRenderer picture(QStringLiteral(":/icons/com.velmora.Velmora.svg"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64}) {
        QPixmap drawn(size, size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        picture.render(&painter);
        painter.end();
        icon.addPixmap(drawn);
    }
    return icon;
}

}  // namespace velmora
