#pragma once

#include "unitstate.h"

#include <QWidget>

namespace bench {

/// The backlight step table as a curve, step by step from left to right, with the day and the night
/// level as lines across.
class BacklightCurve : public QWidget
{
    Q_OBJECT

public:
    explicit BacklightCurve(QWidget *parent = nullptr);

    void present(const UnitState &state);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPointF point(int step) const;
    qreal levelY(int value) const;
    void drawAxes(QPainter &painter) const;
    void drawLevel(QPainter &painter, std::optional<int> level, const QString &name) const;
    void drawSteps(QPainter &painter) const;
    QRectF area() const;

    QVector<int> m_steps;
    bool m_fromFile = false;
    std::optional<int> m_day;
    std::optional<int> m_night;
};

} // namespace bench
