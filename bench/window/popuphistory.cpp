#include "popuphistory.h"

#include "tone.h"

#include <QHeaderView>
#include <QIcon>

namespace bench {

namespace {

enum Column { Code, Meaning, Text };

constexpr int signSize = 16;

} // namespace

PopupHistory::PopupHistory(QWidget *parent)
    : QTreeWidget(parent)
{
    setObjectName(QStringLiteral("history"));
    setAccessibleName(tr("Pop-ups"));
    setHeaderLabels({tr("Code"), tr("Meaning"), tr("Text")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setIconSize({signSize, signSize});
    setTabKeyNavigation(false);
    header()->setSectionsMovable(false);
    header()->setSectionResizeMode(Code, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(Meaning, QHeaderView::ResizeToContents);
}

void PopupHistory::present(const UnitState &state)
{
    if (state.popups.size() < topLevelItemCount())
        clear();
    for (int i = topLevelItemCount(); i < state.popups.size(); ++i) {
        const Popup &popup = state.popups.at(i);
        const PopupKind kind = popupKind(popup.code);
        auto *item =
            new QTreeWidgetItem({QString::number(popup.code), capitalized(kind.name), popup.text});
        item->setIcon(Code, toneSign(kind.tone, signSize, devicePixelRatioF()));
        item->setToolTip(Text, popup.text);
        if (kind.tone == PopupKind::Trouble) {
            QFont bold = font();
            bold.setBold(true);
            item->setFont(Meaning, bold);
            item->setForeground(Meaning, toneColor(kind.tone));
        }
        addTopLevelItem(item);
        scrollToItem(item);
    }
}

} // namespace bench
