#pragma once
// What assistive technology reads of a vkTreeList: a tree whose table holds the rows a person can
// reach (the visible rows, in display order) by the control's columns, under one row of column
// headers: the first header row's texts name the columns, the texts of further header rows
// describe them. Cells are made when asked for and kept until the rows change; their order among
// the children is Qt's own tree view's: the column headers, then the cells row by row.

#include "lsNodes.h"

#include <QAccessibleTableInterface>
#include <QAccessibleWidget>
#include <QHash>
#include <QPair>

class vkTreeList;

class TreeListAccessible : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit TreeListAccessible(vkTreeList *list);
    ~TreeListAccessible() override;

    // Registers the factory that gives the control, and the editor's buttons, their interfaces.
    static void install();

    // The control.
    vkTreeList *list() const;
    // A row's visible rank (0-based), or -1 when it is not visible.
    int rankOf(const lsNode &row) const;
    // The row at a visible rank, or null.
    lsNodePtr rowAt(int rank) const;
    // The interface of a row's cell (column 1..), or of a column's header when row is null.
    QAccessibleInterface *cell(const lsNodePtr &row, int column) const;
    // Forgets the cells made so far: the rows changed.
    void forgetCells();

    void *interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *focusChild() const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessible::State state() const override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return {}; }
    int columnCount() const override;
    int rowCount() const override;
    QAccessibleInterface *cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent *event) override;

private:
    int headerCount() const; // the header cells among the children: a row of them, or none

    // The cells made so far, by row and column (a header: no row).
    mutable QHash<QPair<const lsNode *, int>, QAccessible::Id> m_cells;
};
