#pragma once
// The ordered, keyed collection of a row's cells. Positions follow insertion order; a cell's
// `Index` is stored only and never chooses its position.
//
// The cells live in slots inside the collection (the first few in the object itself, later ones
// in chunks), so a row's cells cost one allocation. A cell handed out is a shared pointer that
// keeps the whole collection alive, so a cell a host holds outlives its row. Such a cell
// never moves: a removed cell keeps its slot while a pointer may reach it or a later cell, and
// otherwise the later cells move up. The pointers to one cell share one anchor, so the collection
// knows which cells are still held (the row's own links also own the row, so its owner count
// cannot tell) and one cell held for long, such as the selection's, pins no other.

#include "IndexKey.h"
#include "PositionIterator.h"
#include "lsCell.h"
#include "vkTreeListExport.h"

#include <QHash>
#include <memory>
#include <vector>

class VKTL_EXPORT lsCells : public std::enable_shared_from_this<lsCells> {
public:
    lsCells() = default;
    lsCells(const lsCells &) = delete;
    lsCells &operator=(const lsCells &) = delete;

    // Appends a cell with the given title, column number and width, placed right of the last
    // cell; under `Key` when it is not "". A duplicate key raises and adds nothing.
    lsCellPtr Add(const QString &Title, qint16 Index, qint32 Width = 120,
                  const QVariant &Key = emptyText());
    // The same, handing the new cell out borrowed (see `cell`).
    lsCell *append(const QString &Title, qint16 Index, qint32 Width = 120,
                   const QVariant &Key = emptyText());
    // The cell at a 1-based position or under a key; unknown raises the invalid-argument error.
    lsCellPtr Item(const QVariant &vntIndexKey) const;
    // The cell at a 1-based position, or null when out of range (for painting and layout).
    lsCellPtr at(qint32 position) const {
        lsCell *cell = cellAt(position);
        return cell ? handle(cell) : nullptr;
    }
    // The cell at a 1-based position, or null, without sharing ownership: valid while the row
    // holds it (for the control's own short-lived reads and writes).
    lsCell *cell(qint32 position) const { return cellAt(position); }
    // Number of cells.
    qint32 Count() const;
    // The 1-based position of the first cell whose right edge (Left + Width) is at or right of X,
    // or -1; one pass, for hit tests that run on every mouse move.
    qint32 firstReaching(qint64 X) const;
    // Removes every cell.
    void Clear();
    // Removes a cell by position or key; later cells move up. Their `Left` is not recomputed.
    void Remove(const QVariant &vntIndexKey);

    // Calls `f(lsCell &)` on the cells at positions 1..last in order, borrowed as `cell` gives
    // them: one pass over the slots, for layouts that touch every cell of a row.
    template <class F> void forEachUpTo(qint32 last, F &&f) const {
        const qint32 inUse = used();
        for (qint32 i = 0; i < inUse && last > 0; ++i) {
            lsCell *c = i < kInline ? &m_inline[i] : slot(i);
            if (!c->m_removed) {
                f(*c);
                --last;
            }
        }
    }

    // For-each over the cells in position order.
    using const_iterator = PositionIterator<lsCells, lsCellPtr, &lsCells::at>;
    const_iterator begin() const { return const_iterator(this, 1); }
    const_iterator end() const { return const_iterator(this, Count() + 1); }

private:
    static constexpr qint32 kInline = 4;
    static constexpr qint32 kChunk = 8;

    // What the pointers to one handed-out cell share: it owns the collection, and it is gone
    // exactly when no pointer to that cell is left. Going, it lets the collection forget it, so
    // no expired anchor's memory stays behind in a row.
    struct Anchor {
        Anchor(std::shared_ptr<const lsCells> owner, const lsCell *cell)
            : owner(std::move(owner)), cell(cell) {}
        Anchor(const Anchor &) = delete;
        Anchor &operator=(const Anchor &) = delete;
        ~Anchor();

        std::shared_ptr<const lsCells> owner;
        const lsCell *cell;
    };
    using HeldCell = std::weak_ptr<const Anchor>;
    // What rows with more cells or keyed cells need. Without it the slots' own marks tell how
    // many are used, which keeps a row of a few cells to one small allocation.
    struct Extra {
        std::vector<std::unique_ptr<lsCell[]>> chunks;
        QHash<QString, lsCell *> keys; // case-folded key -> cell
        qint32 used = 0;               // slots holding a cell, removed or not
        qint32 count = 0;              // cells not removed
        std::vector<HeldCell> held;    // handed-out cells beside the last one
    };
    Extra &extra();
    qint32 used() const;

    lsCell *slot(qint32 i) const;
    lsCell *cellAt(qint32 position) const;
    qint32 slotOf(qint32 position) const;
    qint32 slotIndex(const lsCell *cell) const;
    lsCellPtr handle(lsCell *cell) const;
    qint32 reachableEnd() const;
    void compact();
    lsCell *find(const QString &key) const;
    void removeAt(qint32 position);
    void forgetKey(const lsCell *cell);

    // Slots 0..used()-1 hold cells; Count() of them are not removed.
    std::unique_ptr<Extra> m_extra;
    // The anchor of the cell handed out last; any others held at the same time are listed in
    // the extra block, so a row costs no more for them until a host holds two cells at once.
    mutable HeldCell m_held;
    mutable lsCell m_inline[kInline];
};

using lsCellsPtr = std::shared_ptr<lsCells>;
