#pragma once

#include "unitstate.h"

#include <QGroupBox>

class QRadioButton;

namespace bench {

class BacklightCurve;

/// The panel's backlight: the step table, and whether the screen shows the day or the night level.
class BacklightPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit BacklightPanel(QWidget *parent = nullptr);

    void present(const UnitState &state);

signals:
    void nightChosen(bool night);

private:
    QRadioButton *m_day;
    QRadioButton *m_night;
    BacklightCurve *m_curve;
};

} // namespace bench
