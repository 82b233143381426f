#include "DropDownDelegate.h"

#include <QPainter>

void DropDownDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const {
    QStyleOptionViewItem look = option;
    // The entry under the pointer looks chosen, as in a combo box's list; the current entry
    // keeps its own look.
    if (option.state & QStyle::State_MouseOver) {
        look.state |= QStyle::State_Selected;
        look.state &= ~QStyle::State_MouseOver;
    }
    QStyledItemDelegate::paint(painter, look, index);
}
