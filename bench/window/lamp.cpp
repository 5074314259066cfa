#include "lamp.h"

#include <QPainter>

namespace bench {

namespace {

QColor glass(Lamp::Light light)
{
    switch (light) {
    case Lamp::Dark:
        return QColor(0x8b, 0x93, 0x9a);
    case Lamp::Amber:
        return QColor(0xf2, 0xa6, 0x1d);
    case Lamp::Green:
        return QColor(0x2f, 0x9e, 0x63);
    }
    Q_UNREACHABLE();
}

} // namespace

Lamp::Lamp(QWidget *parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Lamp::setLight(Light light)
{
    m_light = light;
    update();
}

QSize Lamp::sizeHint() const
{
    return {26, 26};
}

void Lamp::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = glass(m_light);
    const QRectF bulb = QRectF(rect()).adjusted(5, 5, -5, -5);
    if (m_light != Dark) {
        QColor glow = color;
        glow.setAlpha(70);
        painter.setPen(Qt::NoPen);
        painter.setBrush(glow);
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
    QRadialGradient shine(bulb.center() - QPointF(2, 3), bulb.width() * 0.8);
    shine.setColorAt(0, color.lighter(m_light == Dark ? 120 : 150));
    shine.setColorAt(1, color);
    painter.setPen(QPen(color.darker(130), 1));
    painter.setBrush(shine);
    painter.drawEllipse(bulb);
}

} // namespace bench
