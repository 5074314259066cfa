#include "backlightpanel.h"

#include "backlightcurve.h"

#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace bench {

namespace {

/// "Day 200", or only "Day" while the unit has got no level.
QString withLevel(const QString &name, std::optional<int> level)
{
    return level ? QStringLiteral("%1 %2").arg(name).arg(*level) : name;
}

} // namespace

BacklightPanel::BacklightPanel(QWidget *parent)
    : QGroupBox(parent)
    , m_day(new QRadioButton)
    , m_night(new QRadioButton)
    , m_curve(new BacklightCurve)
{
    setTitle(tr("Backlight"));
    m_day->setObjectName(QStringLiteral("day"));
    m_day->setChecked(true);
    m_night->setObjectName(QStringLiteral("night"));
    connect(m_night, &QRadioButton::toggled, this, &BacklightPanel::nightChosen);

    auto *levels = new QHBoxLayout;
    levels->addWidget(m_day);
    levels->addWidget(m_night);
    levels->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(levels);
    layout->addWidget(m_curve, 1);
}

void BacklightPanel::present(const UnitState &state)
{
    m_day->setText(withLevel(tr("&Day"), state.dayLevel));
    m_night->setText(withLevel(tr("N&ight"), state.nightLevel));
    m_curve->present(state);
}

} // namespace bench
