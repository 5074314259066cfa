#pragma once

#include "unitstate.h"

#include <QGroupBox>

class QLabel;
class QVBoxLayout;

namespace bench {

class StickRow;

/// The sticks that the bench knows, plugged or not.
class StickPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit StickPanel(QWidget *parent = nullptr);

    void present(const UnitState &state);

signals:
    void plugWanted(const QString &directory);
    void unplugWanted(const QString &directory);

private slots:
    void chooseFolder();

private:
    StickRow *addRow();

    QLabel *m_hint;
    QVBoxLayout *m_rowLayout;
    QVector<StickRow *> m_rows;
};

} // namespace bench
