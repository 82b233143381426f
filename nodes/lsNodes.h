#pragma once
// The collection that owns one tree of rows. It links rows into the tree, keeps them at the same
// time in a keyed collection whose positions follow tree order (position i holds the row whose
// `Index` is i), walks them with one shared cursor, opens and closes branches and remembers the
// selected row and cell. Single-threaded: only one walk may run at a time.

#include "IndexKey.h"
#include "NodeOrder.h"
#include "PositionIterator.h"
#include "TreeListTypes.h"
#include "lsNode.h"
#include "vkTreeListExport.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <vector>

class VKTL_EXPORT lsNodes : public QObject {
    Q_OBJECT
public:
    // Makes an empty collection.
    explicit lsNodes(QObject *parent = nullptr);
    // Releases every row and breaks its links, so rows a host still holds stand alone.
    ~lsNodes() override;

    // Adds a row placed by `Relationship` to `Relative` (unknown or missing: the first row) and
    // returns it. lsFirst and lsLast act as lsNext and the caller's variable is set to lsNext.
    // A duplicate key raises error 457 after the row was linked and counted; a key that is
    // neither text nor number, or an unknown relationship, raises before anything changes.
    // `Image` and `SelectedSmage` are accepted and ignored.
    lsNodePtr Add(const QVariant &Relative, qint32 &Relationship, const QVariant &Key = emptyText(),
                  const QString &Text = QString(), const QVariant &Image = emptyText(),
                  const QVariant &SelectedSmage = QVariant());
    // As above, with the relationship passed by value.
    lsNodePtr Add(const QVariant &Relative = QVariant(),
                  lsRelationshipConstants Relationship = lsChild, const QVariant &Key = emptyText(),
                  const QString &Text = QString(), const QVariant &Image = emptyText(),
                  const QVariant &SelectedSmage = QVariant());
    // The row at a 1-based position or under a key; null when none or of the wrong type.
    lsNodePtr Item(const QVariant &IndexKey) const;
    // Same as Item.
    lsNodePtr Nodes(const QVariant &vntIndexKey) const;
    // The row at a 1-based position, or null when out of range.
    lsNodePtr at(qint32 position) const;
    // Iteration over the rows in position order.
    using const_iterator = PositionIterator<lsNodes, lsNodePtr, &lsNodes::at>;

    // Starts a walk at the row named (empty text or unknown: the first row) and returns it.
    lsNodePtr SetFirstNode(const QVariant &IndexKey = emptyText());
    // The row before `Node` by position; with OnlyVisibleNode the nearest `Displayed` one, or
    // the first row when none before it is displayed.
    lsNodePtr GetPrevNode(const lsNodePtr &Node, bool OnlyVisibleNode = true) const;
    // The next row of the walk in pre-order (only `Visible` rows with OnlyVisibleNode); null at
    // the end, after which the next call starts again at the first row.
    lsNodePtr GetNextNode(bool OnlyVisibleNode = true);
    // Renumbers `Index` in pre-order; returns the row count + 1.
    qint32 ReIndex();

    // Opens or closes a row and recomputes `Visible` from it to the end of the tree (see
    // SetVisibility for what that costs).
    void setExpanded(const lsNodePtr &Node, bool value);
    // Whether a row is open; false for null.
    bool Expanded(const lsNodePtr &Node) const;

    // Number of rows counted by Add and Remove.
    qint32 Count() const { return m_count; }
    // Removes a row with its subtree; false when no row is named. More than 32767 rows raise
    // the overflow error before anything is removed.
    bool Remove(const QVariant &IndexKey);
    // Sets `Flag` false on every row.
    void ClearFlags();
    // Removes every row (raising overflow, unchanged, above 32767 rows).
    void Clear();

    // The last of the siblings after `Node`; null for null or when `Node` is the last sibling.
    lsNodePtr GetLastSibling(const lsNodePtr &Node) const;
    // The first top-level row (first in tree order).
    lsNodePtr Root() const { return m_root; }
    // The row at the last position.
    lsNodePtr Tail() const { return m_tail; }
    // The texts from the top-level ancestor down to `Node`, joined by backslashes.
    QString FindPath(const lsNodePtr &Node) const;
    // Recomputes `Visible` from `Node` to the end of the tree, visiting only `Node`'s subtree and
    // the rows that may disagree with their parent (the subtree when `Visible` is next read);
    // always returns false.
    bool SetVisibility(const lsNodePtr &Node);

    // Selects row `RowID` and its cell `ColID` among the visible rows (clearing the others'
    // flags unless MultiSelect); returns how many visible rows were selected before.
    qint32 Selected(qint32 RowID, qint32 ColID, bool MultiSelect = false);
    // Selects visible rows as Selected with MultiSelect does one after the other, once the first
    // has replaced the selection: the last becomes the selected row, each row's cell ColID is
    // flagged. In the time of the rows and of the rows selected before.
    void SelectRows(const std::vector<lsNodePtr> &rows, qint32 ColID);
    // Clears the flags of a row and its cells; the selected row and cell are none when they were
    // this row's.
    void Deselect(const lsNodePtr &row);
    // The selected row, or null.
    lsNodePtr SelectedRow() const { return m_selectedRow; }
    // The selected cell, or null.
    lsCellPtr SelectedCell() const { return m_selectedCell; }
    // Forgets the selected row and cell without touching their `Selected` flags.
    void ClearSelection();

    // Sets a row's `Displayed` for painting and remembers it, so that ClearDisplayed finds it.
    void markDisplayed(const lsNodePtr &row);
    // Clears `Displayed` on every row of the collection that has it set: the rows marked since
    // the last clearing, or every row when one was put from outside painting meanwhile.
    void ClearDisplayed();
    // Number of `Visible` rows at positions 1..Position (for scrolling by display line).
    qint32 VisibleRowsUpTo(qint32 Position) const;
    // The row that is the k-th `Visible` row in position order, or null when there are fewer.
    lsNodePtr VisibleRowAt(qint32 k) const;
    // Up to `count` `Visible` rows in position order from the k-th on, in the time of one
    // VisibleRowAt plus the rows.
    std::vector<lsNodePtr> VisibleRowsFrom(qint32 k, qint32 count) const;

    // Asserts the collection's internal invariants (debug builds; no-op otherwise).
    void check() const;

    // For-each over the rows in position order.
    const_iterator begin() const;
    const_iterator end() const;

signals:
    // Forwards an error number and text (declared for hosts; the collection raises it nowhere).
    void OnError(qint32 ID, const QString &Description);
    // Declared for hosts; expanding goes through the control's own event.
    void OnExpand(const lsNodePtr &Node);
    // Declared for hosts; collapsing goes through the control's own event.
    void OnCollapse(const lsNodePtr &Node);

private:
    // Links `node` to `relative`; returns the row before it in pre-order (null: it is first).
    const lsNode *link(const lsNodePtr &node, const lsNodePtr &relative, qint32 relationship);
    void unlink(lsNode *node);
    void releaseAll();

    // Selection (lsNodesSelection.cpp).
    qint32 selectByWalk(qint32 RowID, qint32 ColID, bool MultiSelect);
    qint32 selectFlagged(qint32 RowID, qint32 ColID, bool MultiSelect);
    bool visitedBySelection(const lsNode *row, qint32 rootRank) const;
    void rememberFlaggedRows();
    // What the selection does to one row it visits: flags it and its cell ColID when it is the
    // target (`isRow`), else clears its flags unless MultiSelect.
    void selectVisitedRow(const lsNodePtr &node, bool isRow, qint32 ColID, bool MultiSelect);

    lsNodePtr m_selectedRow;
    lsCellPtr m_selectedCell;
    lsNodePtr m_root;
    lsNodePtr m_tail;
    // The last top-level row, so the last sibling of a top-level row is found at once.
    lsNodePtr m_lastTop;
    qint32 m_count = 0;
    lsNodePtr m_walkStart;
    lsNodePtr m_cursor;
    NodeOrder m_order;
    // Rows marked by markDisplayed since the last clearing, and the count of outside puts then.
    std::vector<std::weak_ptr<lsNode>> m_displayed;
    quint64 m_displayedPuts = 0;
    // Rows whose own or cells' `Selected` the selections may have left set (no other row has a
    // flag while SelectionPuts::count() stays at m_selectionPuts), each once.
    std::vector<std::weak_ptr<lsNode>> m_flagged;
    // Whether rows of the collection may carry `Flag` from a removal that did not go through, and
    // the count of hand puts of it when ClearFlags last visited every row.
    bool m_flagsLeft = false;
    quint64 m_flagPuts = lsNode::s_flagPuts;
    quint64 m_selectionPuts = SelectionPuts::count();
};
