#include "stickrow.h"

#include "elidedlabel.h"
#include "tone.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace bench {

namespace {

QString poolText(const PoolLevel &pool)
{
    if (pool.count > 0)
        return StickRow::tr("%1: %n left", nullptr, pool.count).arg(pool.group);
    return QStringLiteral("<b style=\"color:%1\">%2</b>")
        .arg(toneColor(PopupKind::Trouble).name(), StickRow::tr("%1: none left").arg(pool.group));
}

QString contentText(const StickState &stick)
{
    if (stick.configurationFile.isEmpty())
        return StickRow::tr("no configuration file");
    QStringList parts{QFileInfo(stick.configurationFile).fileName()};
    for (const PoolLevel &pool : stick.pools)
        parts.append(poolText(pool));
    return parts.join(QStringLiteral(" \u00b7 "));
}

} // namespace

StickRow::StickRow(QWidget *parent)
    : QWidget(parent)
    , m_name(new ElidedLabel(Qt::ElideLeft))
    , m_content(new QLabel)
    , m_button(new QPushButton)
{
    m_content->setObjectName(QStringLiteral("stickContent"));
    m_content->setTextFormat(Qt::RichText);
    m_button->setObjectName(QStringLiteral("plug"));
    connect(m_button, &QPushButton::clicked, this, &StickRow::toggle);

    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(0, 2, 0, 2);
    layout->setHorizontalSpacing(12);
    layout->setVerticalSpacing(2);
    layout->setColumnStretch(0, 1);
    layout->addWidget(m_name, 0, 0);
    layout->addWidget(m_content, 1, 0);
    layout->addWidget(m_button, 0, 1, 2, 1, Qt::AlignVCenter);
}

void StickRow::present(const StickState &stick)
{
    m_stick = stick;
    m_name->setText(stick.directory);
    m_content->setText(contentText(stick));
    m_button->setText(stick.plugged ? tr("&Unplug") : tr("&Plug"));
    m_button->setAccessibleName(
        (stick.plugged ? tr("Unplug %1") : tr("Plug %1")).arg(stick.directory));
}

void StickRow::toggle()
{
    if (m_stick.plugged)
        emit unplugWanted(m_stick.directory);
    else
        emit plugWanted(m_stick.directory);
}

} // namespace bench
