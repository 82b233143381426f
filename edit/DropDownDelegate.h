#pragma once
// How the editor's drop-down list draws its entries: the entry under the pointer in the palette's
// highlight, as a combo box's list shows it.

#include <QStyledItemDelegate>

class DropDownDelegate : public QStyledItemDelegate {
public:
    explicit DropDownDelegate(QObject *parent) : QStyledItemDelegate(parent) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
