#pragma once
// One cell of the tree list, or one column header, as assistive technology reads it: its text,
// where it is on the screen, its row's states, and for a cell the actions a click would take
// (select it; open or close its row). The row is held weakly: a removed row's cell is invalid.

#include "lsNodes.h"

#include <QAccessibleActionInterface>
#include <QAccessibleInterface>
#include <QAccessibleTableCellInterface>
#include <QPointer>

class TreeListAccessible;
class vkTreeList;

class TreeListAccessibleCell : public QAccessibleInterface,
                               public QAccessibleTableCellInterface,
                               public QAccessibleActionInterface {
public:
    // A cell of `row` in `column` (1..); a column header when row is null.
    TreeListAccessibleCell(vkTreeList *list, const lsNodePtr &row, int column);

    // Whether a row's cell reads as selected: the whole row in full-row focus, else the cell.
    static bool selected(vkTreeList &list, const lsNodePtr &row, int column);
    // The row (null for a header or a row gone) and the column (1..).
    lsNodePtr row() const { return m_row.lock(); }
    int column() const { return m_column; }
    bool isHeader() const { return m_header; }

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_column - 1; }
    int rowIndex() const override;
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override;
    void doAction(const QString &actionName) override;
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

private:
    TreeListAccessible *tree() const;
    // The cell's text as the control shows it; a picture-only cell: its icon key, else its tag.
    QString name() const;
    // "Level 2 under Parent, 3 children" for a row's first column: where it sits in the tree.
    QString treePlace(const lsNode &row) const;

    QPointer<vkTreeList> m_list;
    std::weak_ptr<lsNode> m_row;
    int m_column;
    bool m_header;
};
