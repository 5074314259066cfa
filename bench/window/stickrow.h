#pragma once

#include "unitstate.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace bench {

class ElidedLabel;

/// One stick: where it is, what its file still holds, and a button that plugs or unplugs it.
class StickRow : public QWidget
{
    Q_OBJECT

public:
    explicit StickRow(QWidget *parent = nullptr);

    void present(const StickState &stick);

signals:
    void plugWanted(const QString &directory);
    void unplugWanted(const QString &directory);

private:
    void toggle();

    StickState m_stick;
    ElidedLabel *m_name;
    QLabel *m_content;
    QPushButton *m_button;
};

} // namespace bench
