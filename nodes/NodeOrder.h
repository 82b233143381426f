#pragma once
// The rows of a node collection: the tree order that numbers them and the positions that name
// them. The collection reaches its rows only through this class.
//
// Tree order is a RowSequence (a list of blocks of rows with counts, see RowSequence.h) holding
// every row linked into the tree, in pre-order: a node, its children's subtrees, then its next
// sibling. A held row's `Index` is its rank there, computed when read, so it is always the number
// a full pre-order renumbering would give; a row that leaves keeps the rank it had.
//
// Positions are that same sequence as long as every linked row was also stored, which is the
// usual case. A duplicate key leaves a row linked but not stored: from then on the positions are
// kept apart, in a plain vector that shifts on every insertion as before, until the collection is
// emptied. Keys are hashed (KeyIndex), compared without regard to case.
//
// Invariants (check() asserts them in debug builds): those of RowSequence; when not apart, every
// key maps to a held row stored under it; when apart, every position holds a row of the tree
// order and every key maps to a row at some position.

#include "KeyIndex.h"
#include "PositionIterator.h"
#include "RowSequence.h"
#include "vkTreeListExport.h"

#include <QString>
#include <QVariant>
#include <vector>

class NodeOrder {
public:
    // The row at a 1-based position, which must be in range (for iteration).
    const lsNodePtr &rowAt(qint32 position) const { return *slot(position); }
    // Iteration over the rows in position order.
    using const_iterator = PositionIterator<NodeOrder, lsNodePtr, &NodeOrder::rowAt>;

    // Puts a row linked into the tree into tree order, right after `previous` (null: first).
    void link(const lsNode *previous, const lsNodePtr &row) { m_tree.insertAfter(previous, row); }
    // Stores a linked row at the position of its `Index` (past the end appends) under a key
    // ("" for none). A duplicate key raises the duplicate-key error; the row stays linked.
    void store(const lsNodePtr &row, const QString &key);
    // Takes a row and the `rows` - 1 rows after it in tree order (its subtree) out of tree order,
    // and out of the positions unless they are kept apart.
    void unlinkRun(const lsNode *top, qint32 rows);
    // The renumbering after a change: rows read their rank as `Index` again. Returns the number
    // of rows in tree order + 1.
    qint32 renumber();
    // The rows in tree order.
    const RowSequence &tree() const { return m_tree; }
    RowSequence &tree() { return m_tree; }

    // True when positions are kept apart from tree order (after a duplicate key).
    bool apart() const { return m_apart; }
    // Number of stored rows.
    qint32 count() const { return m_apart ? qint32(m_positions.size()) : m_tree.size(); }
    // The row at a 1-based position, or null when out of range.
    lsNodePtr at(qint32 position) const {
        const lsNodePtr *s = slot(position);
        return s ? *s : nullptr;
    }
    // The node a position or key names, or null when it names none or is of the wrong type.
    lsNodePtr item(const QVariant &indexKey) const;
    // Drops the row at a 1-based position while positions are kept apart.
    void removeAt(qint32 position);
    // Drops every row; each keeps its rank as `Index`.
    void clear();

    // Number of `Visible` rows at positions 1..position.
    qint32 visibleUpTo(qint32 position) const;
    // The k-th `Visible` row in position order, or null.
    lsNodePtr visibleRow(qint32 k) const;
    // Appends up to `count` `Visible` rows in position order, from the k-th on.
    void visibleRows(qint32 k, qint32 count, std::vector<lsNodePtr> &out) const;

    // Iteration over the rows in position order.
    const_iterator begin() const { return const_iterator(this, 1); }
    const_iterator end() const { return const_iterator(this, count() + 1); }

    // The link that holds the node after `node` in pre-order: its first child, else its next
    // sibling, else the next sibling of its nearest ancestor that has one; null at the end.
    static const lsNodePtr *nextLink(const lsNode *node);
    // The node after `node` in pre-order, or null at the end of the tree.
    static lsNode *nextInPreOrder(const lsNode *node) {
        const lsNodePtr *link = nextLink(node);
        return link ? link->get() : nullptr;
    }

    // Asserts the invariants listed above (debug builds; no-op otherwise).
    void check() const;

private:
    // Exported: the public row collection's inline accessors reach it from a host's code.
    VKTL_EXPORT const lsNodePtr *slot(qint32 position) const;
    void dropKey(lsNode *row);
    void keepApart(const lsNode *unstored);

    RowSequence m_tree;
    bool m_apart = false;
    std::vector<lsNodePtr> m_positions;
    KeyIndex m_keys;
};
