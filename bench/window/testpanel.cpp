#include "testpanel.h"

#include "../platform/moduleregistry.h"
#include "lamp.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace bench {

namespace {

QString statusText(const InterfaceTest &test)
{
    if (!test.present)
        return TestPanel::tr("Not in this unit");
    if (test.dataSeen)
        return TestPanel::tr("Data seen");
    return test.on ? TestPanel::tr("Waiting for data") : TestPanel::tr("Test mode is off");
}

Lamp::Light light(const InterfaceTest &test)
{
    if (test.dataSeen)
        return Lamp::Green;
    return test.on ? Lamp::Amber : Lamp::Dark;
}

} // namespace

TestPanel::TestPanel(QWidget *parent)
    : QGroupBox(parent)
{
    setTitle(tr("Interface tests"));
    auto *layout = new QGridLayout(this);
    layout->setColumnStretch(1, 1);
    layout->setHorizontalSpacing(10);
    m_canbus = addRow(layout, tr("CAN bus"), tr("&CAN data seen"), canbusModuleName);
    layout->setRowMinimumHeight(layout->rowCount(), 10);
    m_keys = addRow(layout, tr("Direction keys"), tr("&Key data seen"), mcuModuleName);
    layout->setRowStretch(layout->rowCount(), 1);
}

TestPanel::Row TestPanel::addRow(QGridLayout *layout, const QString &title,
                                 const QString &buttonText, const QString &module)
{
    const Row row{new Lamp, new QLabel(title), new QLabel, new QPushButton(buttonText)};
    row.lamp->setObjectName(module + QLatin1String("Lamp"));
    row.lamp->setAccessibleName(title);
    row.title->setObjectName(module + QLatin1String("Title"));
    row.button->setObjectName(module + QLatin1String("Seen"));
    connect(row.button, &QPushButton::clicked, this, [this, module] { emit dataSeen(module); });

    QFont bold = row.title->font();
    bold.setBold(true);
    row.title->setFont(bold);
    const int top = layout->rowCount();
    layout->addWidget(row.lamp, top, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(row.title, top, 1);
    layout->addWidget(row.status, top + 1, 1);
    layout->addWidget(row.button, top + 2, 1);
    return row;
}

void TestPanel::present(const UnitState &state)
{
    m_canbus.title->setText(state.canbus.on ? tr("CAN bus, index %1").arg(state.canbus.index)
                                            : tr("CAN bus"));
    present(m_canbus, state.canbus, state);
    present(m_keys, state.keys, state);
}

void TestPanel::present(const Row &row, const InterfaceTest &test, const UnitState &state)
{
    row.lamp->setLight(light(test));
    row.lamp->setAccessibleDescription(statusText(test));
    row.status->setText(statusText(test));
    const bool alive = state.stage == UnitState::Running || state.stage == UnitState::Waiting;
    row.button->setEnabled(test.present && alive);
}

} // namespace bench
