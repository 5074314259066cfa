#include "stickpanel.h"

#include "stickrow.h"

#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace bench {

StickPanel::StickPanel(QWidget *parent)
    : QGroupBox(parent)
    , m_hint(new QLabel(tr("A folder dropped here is a stick.")))
    , m_rowLayout(new QVBoxLayout)
{
    setTitle(tr("Sticks"));
    auto *add = new QPushButton(tr("&Add stick\u2026"));
    add->setObjectName(QStringLiteral("addStick"));
    connect(add, &QPushButton::clicked, this, &StickPanel::chooseFolder);

    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_hint, 1);
    bottom->addWidget(add);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(m_rowLayout);
    layout->addLayout(bottom);
}

void StickPanel::present(const UnitState &state)
{
    // Sticks come, but none is ever forgotten.
    while (m_rows.size() < state.sticks.size())
        m_rows.append(addRow());
    for (int i = 0; i < m_rows.size(); ++i)
        m_rows.at(i)->present(state.sticks.at(i));
}

StickRow *StickPanel::addRow()
{
    auto *row = new StickRow;
    connect(row, &StickRow::plugWanted, this, &StickPanel::plugWanted);
    connect(row, &StickRow::unplugWanted, this, &StickPanel::unplugWanted);
    m_rowLayout->addWidget(row);
    return row;
}

void StickPanel::chooseFolder()
{
    const QString directory = QFileDialog::getExistingDirectory(this, tr("Add a stick"));
    if (!directory.isEmpty())
        emit plugWanted(directory);
}

} // namespace bench
