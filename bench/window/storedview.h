#pragma once

#include "unitstate.h"

#include <QTreeWidget>

namespace bench {

/// What the unit stores, area by area; what this pass has changed stands out.
class StoredView : public QTreeWidget
{
    Q_OBJECT

public:
    explicit StoredView(QWidget *parent = nullptr);

    void present(const UnitState &state);

private:
    void addArea(Area area, const UnitState &state);
    void addValue(QTreeWidgetItem *area, const StoredValue &value);
};

} // namespace bench
