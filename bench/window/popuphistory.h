#pragma once

#include "unitstate.h"

#include <QTreeWidget>

namespace bench {

/// Every pop-up of this unit, the latest at the end.
class PopupHistory : public QTreeWidget
{
    Q_OBJECT

public:
    explicit PopupHistory(QWidget *parent = nullptr);

    void present(const UnitState &state);
};

} // namespace bench
