#include "lsCells.h"

lsCellPtr lsCells::Add(const QString &Title, qint16 Index, qint32 Width, const QVariant &Key) {
    auto cell = std::make_shared<lsCell>();
    cell->setTitle(Title);
    cell->setIndex(Index);
    cell->setWidth(Width);
    // Cells lie side by side from x = 0 in the order they were added, whatever their Index says.
    // A right edge past 32 bits is the overflow error, raised before the cell is stored.
    if (const lsCellPtr last = m_items.at(m_items.count()))
        cell->setLeft(toInt32(qint64{last->Left()} + last->Width()));
    const QString key = variantText(Key);
    if (!key.isEmpty())
        cell->setKey(Key);
    m_items.append(cell, key);
    return cell;
}

lsCellPtr lsCells::Item(const QVariant &vntIndexKey) const {
    return m_items.itemOrThrow(vntIndexKey);
}

void lsCells::Clear() {
    while (m_items.count() > 0)
        m_items.removeAt(1);
}

void lsCells::Remove(const QVariant &vntIndexKey) {
    m_items.remove(vntIndexKey);
}
