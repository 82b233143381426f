#pragma once
// The rows of a node collection: the tree order that numbers them and the positions that name
// them. The collection reaches its rows only through this class, and its rows reach the
// collection only through it (as their RowOwner).
//
// Tree order is a RowSequence (a list of blocks of rows with counts, see RowSequence.h) holding
// every row linked into the tree, in pre-order: a node, its children's subtrees, then its next
// sibling. A held row's `Index` is its rank there, computed when read, so it is always the number
// a full pre-order renumbering would give, unless a host put a number on it (IndexPuts) that
// stands until the next renumbering; a row that leaves keeps the number it read. The rows'
// `Visible` is kept in step with their parents by a RowVisibility, whose put-off work runs before
// the tree order changes.
//
// Positions are that same sequence as long as every linked row was also stored, which is the
// usual case. A duplicate key leaves a row linked but not stored: from then on the positions are
// kept apart, in a plain vector that shifts on every insertion, until the collection is emptied.
// Keys are hashed (KeyIndex), compared without regard to case.
//
// Invariants (check() asserts them in debug builds): those of RowSequence and RowVisibility; every
// row with a number put on it is held; when not apart, every key maps to a held row stored under
// it; when apart, every position holds a row of the tree order and every key maps to a row at
// some position.

#include "IndexPuts.h"
#include "KeyIndex.h"
#include "PositionIterator.h"
#include "RowOwner.h"
#include "RowSequence.h"
#include "RowVisibility.h"

#include <QString>
#include <QVariant>
#include <vector>

class NodeOrder final : public RowOwner {
public:
    NodeOrder() : m_tree(*this), m_visibility(m_tree) {}
    // Drops every row (as clear()).
    ~NodeOrder();
    NodeOrder(const NodeOrder &) = delete;
    NodeOrder &operator=(const NodeOrder &) = delete;

    // The row at a 1-based position, which must be in range (for iteration).
    const lsNodePtr &rowAt(qint32 position) const { return *slot(position); }
    // Iteration over the rows in position order.
    using const_iterator = PositionIterator<NodeOrder, lsNodePtr, &NodeOrder::rowAt>;

    // Puts a row linked into the tree into tree order, right after `previous` (null: first).
    void link(const lsNode *previous, const lsNodePtr &row);
    // Stores a linked row at the position of its `Index` (past the end appends) under a key
    // ("" for none). A duplicate key raises the duplicate-key error; the row stays linked.
    void store(const lsNodePtr &row, const QString &key);
    // Takes a row and the `rows` - 1 rows after it in tree order (its subtree) out of tree order,
    // and out of the positions unless they are kept apart.
    void unlinkRun(const lsNode *top, qint32 rows);
    // The renumbering after a change: rows read their rank as `Index` again. Returns the number
    // of rows in tree order + 1.
    qint32 renumber();
    // True when some held row reads a number a host put instead of its rank.
    bool hasIndexPuts() const { return !m_puts.empty(); }
    // The rows in tree order.
    const RowSequence &tree() const { return m_tree; }
    // The keeper of the rows' `Visible`.
    RowVisibility &visibility() { return m_visibility; }

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

    // Asserts the invariants listed above (debug builds; no-op otherwise).
    void check() const;

    // What a held row asks (see RowOwner).
    void resolvePending() override { m_visibility.resolvePending(); }
    void visibleChanged(const lsNode &row, bool visible) override;
    void unsettle(lsNode &row) override;
    qint32 indexOf(const lsNode &row) const override;
    void putIndex(const lsNode &row, qint32 index) override { m_puts.put(&row, index); }

private:
    const lsNodePtr *slot(qint32 position) const;
    void dropKey(lsNode *row);
    void keepApart(const lsNode *unstored);

    RowSequence m_tree;
    RowVisibility m_visibility;
    IndexPuts m_puts;
    bool m_apart = false;
    std::vector<lsNodePtr> m_positions;
    KeyIndex m_keys;
};
