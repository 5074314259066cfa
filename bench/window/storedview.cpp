#include "storedview.h"

#include "../valuetext.h"

#include <QHeaderView>
#include <QScrollBar>

namespace bench {

namespace {

enum Column { Key, Value, Change };

QString changeText(const StoredValue &value)
{
    switch (value.change) {
    case StoredValue::Kept:
        return {};
    case StoredValue::Added:
        return StoredView::tr("new");
    case StoredValue::Replaced:
        return StoredView::tr("was %1").arg(plainText(value.before));
    case StoredValue::Confirmed:
        return StoredView::tr("stored again");
    }
    Q_UNREACHABLE();
}

/// What production is about comes first.
constexpr std::array<Area, areas.size()> shownAreas{Area::Production, Area::Factory, Area::Runtime,
                                                    Area::User};

QString areaTitle(Area area)
{
    switch (area) {
    case Area::Factory:
        return StoredView::tr("Factory data");
    case Area::Runtime:
        return StoredView::tr("Runtime data");
    case Area::Production:
        return StoredView::tr("Production data");
    case Area::User:
        return StoredView::tr("User data");
    }
    Q_UNREACHABLE();
}

} // namespace

StoredView::StoredView(QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("stored"));
    setAccessibleName(tr("Stored on the unit"));
    setHeaderLabels({tr("Key"), tr("Value"), tr("This pass")});
    setRootIsDecorated(false);
    setIndentation(12);
    setUniformRowHeights(true);
    header()->setSectionsMovable(false);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(Key, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(Value, QHeaderView::Stretch);
    header()->setSectionResizeMode(Change, QHeaderView::ResizeToContents);
}

void StoredView::present(const UnitState &state)
{
    const int position = verticalScrollBar()->value();
    clear();
    for (const Area area : shownAreas)
        addArea(area, state);
    expandAll();
    verticalScrollBar()->setValue(position);
}

void StoredView::addArea(Area area, const UnitState &state)
{
    QTreeWidgetItem *title = nullptr;
    for (const StoredValue &value : state.stored) {
        if (value.now.area != area)
            continue;
        if (!title) {
            title = new QTreeWidgetItem(this, {areaTitle(area)});
            title->setFirstColumnSpanned(true);
            title->setFlags(Qt::ItemIsEnabled);
            title->setForeground(Key, palette().color(QPalette::PlaceholderText));
        }
        addValue(title, value);
    }
}

void StoredView::addValue(QTreeWidgetItem *area, const StoredValue &value)
{
    QString key = value.now.key;
    QString change = changeText(value);
    const QStringList lines = valueLines(value.now);
    for (const QString &line : lines) {
        auto *item = new QTreeWidgetItem(area, {key, line, change});
        item->setToolTip(Value, line);
        if (value.change == StoredValue::Added || value.change == StoredValue::Replaced) {
            QFont bold = font();
            bold.setBold(true);
            for (const Column column : {Value, Change})
                item->setFont(column, bold);
        }
        key.clear();
        change.clear();
    }
}

} // namespace bench
