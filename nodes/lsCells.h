#pragma once
// The ordered, keyed collection of a row's cells. Positions follow insertion order; a cell's
// `Index` is stored only and never chooses its position.

#include "KeyedCollection.h"
#include "lsCell.h"

class lsCells {
public:
    // Appends a cell with the given title, column number and width, placed right of the last
    // cell; under `Key` when it is not "". A duplicate key raises and adds nothing.
    lsCellPtr Add(const QString &Title, qint16 Index, qint32 Width = 120,
                  const QVariant &Key = emptyText());
    // The cell at a 1-based position or under a key; unknown raises the invalid-argument error.
    lsCellPtr Item(const QVariant &vntIndexKey) const;
    // The cell at a 1-based position, or null when out of range (for painting and layout).
    lsCellPtr at(qint32 position) const { return m_items.at(position); }
    // Number of cells.
    qint32 Count() const { return m_items.count(); }
    // Removes every cell.
    void Clear();
    // Removes a cell by position or key; later cells move up. Their `Left` is not recomputed.
    void Remove(const QVariant &vntIndexKey);

    // For-each over the cells in position order.
    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    KeyedCollection<lsCell> m_items;
};

using lsCellsPtr = std::shared_ptr<lsCells>;
