#include "tone.h"

#include <QPainter>
#include <QPainterPath>

namespace bench {

namespace {

// The signs are drawn on a square of 24 units.

void drawCheck(QPainter &painter)
{
    painter.drawPolyline(QPolygonF({QPointF(7, 12.5), QPointF(10.5, 16), QPointF(17, 8.5)}));
}

void drawExclamation(QPainter &painter)
{
    painter.drawLine(QPointF(12, 6.5), QPointF(12, 13));
    painter.drawPoint(QPointF(12, 17.2));
}

void drawInformation(QPainter &painter)
{
    painter.drawPoint(QPointF(12, 6.8));
    painter.drawLine(QPointF(12, 11), QPointF(12, 17.5));
}

QPainterPath outline(PopupKind::Tone tone)
{
    QPainterPath path;
    if (tone == PopupKind::Trouble)
        path.addRoundedRect(2, 2, 20, 20, 3, 3); // a shape of its own as well
    else
        path.addEllipse(1.5, 1.5, 21, 21);
    return path;
}

} // namespace

QColor toneColor(PopupKind::Tone tone)
{
    switch (tone) {
    case PopupKind::Success:
        return QColor(0x2f, 0x9e, 0x63);
    case PopupKind::Trouble:
        return QColor(0xd9, 0x48, 0x3b);
    case PopupKind::Progress:
        return QColor(0x4a, 0x86, 0xc5);
    }
    Q_UNREACHABLE();
}

QPixmap toneSign(PopupKind::Tone tone, int size, qreal devicePixelRatio)
{
    QPixmap pixmap(QSize(size, size) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);

    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / 24.0, size / 24.0);
    painter.fillPath(outline(tone), toneColor(tone));
    painter.setPen(QPen(Qt::white, 2.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (tone) {
    case PopupKind::Success:
        drawCheck(painter);
        break;
    case PopupKind::Trouble:
        drawExclamation(painter);
        break;
    case PopupKind::Progress:
        drawInformation(painter);
        break;
    }
    return pixmap;
}

QString capitalized(const QString &text)
{
    return text.isEmpty() ? text : text.at(0).toUpper() + text.mid(1);
}

} // namespace bench
