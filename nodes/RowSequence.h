#pragma once
// The rows of one tree in pre-order, kept as a list of blocks of at most RowBlock::kCapacity
// consecutive rows. Each row points to its block, so a row finds its rank by the start of its
// block plus a scan of at most one block. Block starts (rows and `Visible` rows before each block)
// are summed lazily: a change marks the starts after the changed block stale and the next query
// brings them up to date only as far as it needs.
//
// Invariants (check() asserts them in debug builds):
//   - every block holds 1..kCapacity rows and each of its rows points back to it; a block before
//     the place mark knows its place in the list (later ones are renumbered when asked);
//   - a block's `visible` and `unsettled` equal the rows in it whose `Visible` is set and that
//     are marked unsettled; the sequence's totals are the sums over its blocks;
//   - the block starts below the valid marks equal the sums of the earlier blocks' counts.
//
// Costs with B = kCapacity and n rows: rank of a row O(B) plus the stale starts before it; row at
// a rank O(log(n/B)) once starts are current (O(1) when it lies in the block of the last lookup);
// insertion O(B), plus O(n/B) when a block splits (once per B/2 insertions at most); removal of
// a run of k rows O(k + B + n/B).

#include "IndexPuts.h"
#include "RowBlock.h"

#include <memory>
#include <vector>

class RowSequence {
public:
    // Rows the sequence holds ask `owner` (see RowOwner).
    explicit RowSequence(RowOwner &owner) : m_owner(owner) {}
    // Lets go of every row, each keeping its rank as `Index`.
    ~RowSequence();
    RowSequence(const RowSequence &) = delete;
    RowSequence &operator=(const RowSequence &) = delete;

    // Number of rows.
    qint32 size() const { return m_size; }
    // Number of rows whose `Visible` is set.
    qint32 visibleCount() const { return m_visibleTotal; }
    // True when the row is held by this sequence.
    bool contains(const lsNode *row) const {
        return row && row->m_inSequence && blockOf(row)->sequence == this;
    }

    // Puts a row right after `previous` (null: at the front).
    void insertAfter(const lsNode *previous, lsNodePtr row);
    // Takes out `count` rows from rank `first` on. Each keeps, as its `Index`, the number `puts`
    // holds for it (which is dropped) or else the rank it had.
    void removeRun(qint32 first, qint32 count, IndexPuts &puts);
    // Takes out every row, numbered as removeRun numbers them.
    void clear(IndexPuts &puts);

    // The 1-based rank of a row the sequence holds.
    static qint32 rankOf(const lsNode *row);
    // The stored pointer of the row at a 1-based rank, or null when out of range.
    const lsNodePtr *slotAt(qint32 rank) const;
    // The stored pointer of a held row.
    static const lsNodePtr &slotOf(const lsNode *row) {
        const RowBlock *block = blockOf(row);
        return block->rows[offsetOf(block, row)];
    }
    // The row at a 1-based rank, or null when out of range.
    lsNode *rowAt(qint32 rank) const {
        const lsNodePtr *slot = slotAt(rank);
        return slot ? slot->get() : nullptr;
    }

    // Number of `Visible` rows at ranks 1..rank (rank is clamped to 0..size).
    qint32 visibleUpTo(qint32 rank) const;
    // The k-th `Visible` row in rank order, or null when there are fewer.
    lsNode *visibleRow(qint32 k) const;
    // Appends up to `count` `Visible` rows in rank order, from the k-th on: one search, then a
    // walk, so a run of rows costs what one does plus the rows.
    void visibleRows(qint32 k, qint32 count, std::vector<lsNodePtr> &out) const;
    // A row's `Visible` as last put, without resolving work put off.
    static bool isVisible(const lsNode *row) { return row->m_Visible; }
    // Puts a row's `Visible` without resolving work put off; the counts of the sequence that
    // holds it follow.
    static void putVisible(lsNode *row, bool visible) {
        if (row->m_Visible == visible)
            return;
        row->m_Visible = visible;
        if (row->m_inSequence)
            visibleChanged(row, visible);
    }
    // Keeps the counts in step after a held row's `Visible` changed to `visible`.
    static void visibleChanged(const lsNode *row, bool visible);

    // Number of rows marked unsettled.
    qint32 unsettledCount() const { return m_unsettledTotal; }
    // True when a row is marked as possibly disagreeing with its parent's visibility.
    static bool isUnsettled(const lsNode *row) { return row->m_unsettled; }
    // Marks a held row so (with its subtree), in the sequence that holds it.
    static void unsettle(lsNode *row);
    // Drops that mark.
    static void settle(lsNode *row);
    // The first row marked unsettled at rank `from` or later, or null.
    lsNode *firstUnsettledFrom(qint32 from) const;

    // Asserts the invariants listed above (debug builds; no-op otherwise).
    void check() const;

private:
    struct Place {
        RowBlock *block;
        qint32 offset;
    };
    static RowBlock *blockOf(const lsNode *row) { return static_cast<RowBlock *>(row->m_holder); }
    static qint32 offsetOf(const RowBlock *block, const lsNode *row);
    // The block that holds the k-th visible row (1..visibleCount()); `before` takes the visible
    // rows ahead of it in that block.
    size_t blockOfVisible(qint32 k, qint32 &before) const;
    Place placeOf(qint32 rank) const;
    void ensureStarts(qint32 through) const;
    void ensureVisibleStarts(qint32 through) const;
    qint32 indexOf(const RowBlock *block) const;
    void sizeChanged(const RowBlock *block);
    void blocksChanged(qint32 from);
    RowBlock *newBlockAt(qint32 index);
    void eraseBlock(qint32 index);
    void insertAt(RowBlock *block, qint32 offset, lsNodePtr row);
    void mergeWithNext(RowBlock *block);
    static void leave(lsNode *row, qint32 index);

    RowOwner &m_owner;
    std::vector<std::unique_ptr<RowBlock>> m_blocks;
    // m_starts[i] / m_visibleStarts[i]: rows / Visible rows in the blocks before block i, for
    // i below m_startsValid / m_visibleValid.
    mutable std::vector<qint32> m_starts;
    mutable std::vector<qint32> m_visibleStarts;
    mutable qint32 m_startsValid = 0;
    mutable qint32 m_visibleValid = 0;
    // Blocks before this place know their place; later ones may have moved.
    mutable qint32 m_indexValid = 0;
    // The block of the last lookup by rank: walking positions in order stays within it.
    mutable qint32 m_finger = 0;
    qint32 m_size = 0;
    qint32 m_visibleTotal = 0;
    qint32 m_unsettledTotal = 0;
};
