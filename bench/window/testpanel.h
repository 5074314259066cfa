#pragma once

#include "unitstate.h"

#include <QGroupBox>

class QGridLayout;
class QLabel;
class QPushButton;

namespace bench {

class Lamp;

/// The interface tests: a lamp for each, and a button that has its module see data.
class TestPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit TestPanel(QWidget *parent = nullptr);

    void present(const UnitState &state);

signals:
    /// The user wants the module called @p name to see data.
    void dataSeen(const QString &name);

private:
    struct Row
    {
        Lamp *lamp;
        QLabel *title;
        QLabel *status;
        QPushButton *button;
    };

    Row addRow(QGridLayout *layout, const QString &title, const QString &buttonText,
               const QString &module);
    static void present(const Row &row, const InterfaceTest &test, const UnitState &state);

    Row m_canbus;
    Row m_keys;
};

} // namespace bench
