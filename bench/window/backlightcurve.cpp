#include "backlightcurve.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace bench {

namespace {

constexpr int brightest = 255;
constexpr int mostDots = 32; ///< more steps than this are a line only

const QColor curveColor(0x4a, 0x86, 0xc5);
const QColor levelColor(0xd9, 0x8a, 0x1f);

} // namespace

BacklightCurve::BacklightCurve(QWidget *parent)
    : QWidget(parent)
{
    setAccessibleName(tr("Backlight step table"));
}

void BacklightCurve::present(const UnitState &state)
{
    m_steps = state.stepTable;
    m_fromFile = state.stepTableFromFile;
    m_day = state.dayLevel;
    m_night = state.nightLevel;
    QStringList values;
    for (const int value : qAsConst(m_steps))
        values.append(QString::number(value));
    setAccessibleDescription(values.join(QLatin1String(", ")));
    setToolTip(tr("%n step(s): %1", nullptr, m_steps.size()).arg(accessibleDescription()));
    update();
}

QSize BacklightCurve::sizeHint() const
{
    return {260, 130};
}

QSize BacklightCurve::minimumSizeHint() const
{
    return {180, 90};
}

void BacklightCurve::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawAxes(painter);
    drawLevel(painter, m_day, tr("day"));
    drawLevel(painter, m_night, tr("night"));
    drawSteps(painter);
}

QRectF BacklightCurve::area() const
{
    const int labels = fontMetrics().horizontalAdvance(QString::number(brightest)) + 6;
    const int line = fontMetrics().height();
    return QRectF(rect()).adjusted(labels, line / 2.0, -line / 2.0, -line * 1.5 - 2);
}

qreal BacklightCurve::levelY(int value) const
{
    return area().bottom() - area().height() * value / brightest;
}

QPointF BacklightCurve::point(int step) const
{
    const int last = std::max(1, m_steps.size() - 1);
    return {area().left() + area().width() * step / last, levelY(m_steps.at(step))};
}

void BacklightCurve::drawAxes(QPainter &painter) const
{
    const QRectF area = this->area();
    QColor grid = palette().color(QPalette::WindowText);
    grid.setAlpha(40);
    QColor label = palette().color(QPalette::WindowText);
    label.setAlpha(170);
    for (const int value : {0, 64, 128, 192, brightest}) {
        painter.setPen(grid);
        painter.drawLine(QPointF(area.left(), levelY(value)), QPointF(area.right(), levelY(value)));
        if (value != 0 && value != 128 && value != brightest)
            continue;
        painter.setPen(label);
        const int line = fontMetrics().height();
        painter.drawText(QRectF(0, levelY(value) - line / 2.0, area.left() - 6, line),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(value));
    }
    painter.setPen(label);
    // Where the font borrows the glyphs of another, those may be taller than it is itself.
    const QRectF below(area.left(), area.bottom() + 2, area.width(), height() - area.bottom() - 2);
    painter.drawText(below, Qt::AlignLeft | Qt::AlignVCenter, QString::number(0));
    painter.drawText(below, Qt::AlignRight | Qt::AlignVCenter,
                     QString::number(std::max(0, m_steps.size() - 1)));
    painter.drawText(below, Qt::AlignHCenter | Qt::AlignVCenter,
                     m_fromFile ? tr("steps from the file") : tr("default steps"));
}

void BacklightCurve::drawLevel(QPainter &painter, std::optional<int> level,
                               const QString &name) const
{
    if (!level)
        return;
    const qreal y = levelY(*level);
    painter.setPen(QPen(levelColor, 1.2, Qt::DashLine));
    painter.drawLine(QPointF(area().left(), y), QPointF(area().right(), y));
    // Above its line, or below where there is no room above.
    const QFontMetrics metrics = fontMetrics();
    const bool fitsAbove = y > metrics.height();
    const qreal baseline = fitsAbove ? y - metrics.descent() - 1 : y + metrics.ascent() + 1;
    painter.setPen(levelColor);
    painter.drawText(QPointF(area().left() + 4, baseline),
                     QStringLiteral("%1 %2").arg(name).arg(*level));
}

void BacklightCurve::drawSteps(QPainter &painter) const
{
    if (m_steps.isEmpty())
        return;
    QColor color = curveColor;
    if (!m_fromFile)
        color = palette().color(QPalette::Disabled, QPalette::WindowText);
    QPolygonF line;
    for (int step = 0; step < m_steps.size(); ++step)
        line.append(point(step));
    painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(line);
    if (m_steps.size() > mostDots)
        return;
    painter.setBrush(color);
    for (const QPointF &dot : qAsConst(line))
        painter.drawEllipse(dot, 2.2, 2.2);
}

} // namespace bench
