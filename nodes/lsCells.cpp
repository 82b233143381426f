#include "lsCells.h"

#include "TreeListError.h"

lsCell *lsCells::slot(qint32 i) const {
    if (i < kInline)
        return &m_inline[i];
    i -= kInline;
    return &m_extra->chunks[size_t(i / kChunk)][size_t(i % kChunk)];
}

qint32 lsCells::slotOf(qint32 position) const {
    if (m_used == m_count)
        return position - 1;
    for (qint32 i = 0; i < m_used; ++i) {
        if (!slot(i)->m_removed && --position == 0)
            return i;
    }
    return -1;
}

lsCell *lsCells::cellAt(qint32 position) const {
    if (position < 1 || position > m_count)
        return nullptr;
    return slot(slotOf(position));
}

lsCellPtr lsCells::handle(lsCell *cell) const {
    // Shares ownership of the collection; one not held by a shared pointer hands out plain
    // pointers that live as long as it does.
    return lsCellPtr(weak_from_this().lock(), cell);
}

lsCell *lsCells::find(const QString &key) const {
    if (key.isEmpty() || !m_extra)
        return nullptr;
    return m_extra->keys.value(key.toCaseFolded());
}

lsCellPtr lsCells::Add(const QString &Title, qint16 Index, qint32 Width, const QVariant &Key) {
    TreeEdits::note();
    // Cells lie side by side from x = 0 in the order they were added, whatever their Index says.
    // A right edge past 32 bits is the overflow error, raised before the cell is stored.
    qint32 left = 0;
    if (const lsCell *last = cellAt(m_count))
        left = toInt32(qint64{last->Left()} + last->Width());
    const QString key = variantText(Key);
    if (find(key))
        throw TreeListError(TreeListError::DuplicateKey);

    if (m_used >= kInline) {
        if (!m_extra)
            m_extra = std::make_unique<Extra>();
        if (m_used - kInline == qint32(m_extra->chunks.size()) * kChunk)
            m_extra->chunks.push_back(std::make_unique<lsCell[]>(kChunk));
    }
    lsCell *cell = slot(m_used++);
    ++m_count;
    cell->Class_Initialize();
    cell->m_removed = false;
    cell->setTitle(Title);
    cell->setIndex(Index);
    cell->setWidth(Width);
    cell->setLeft(left);
    if (!key.isEmpty()) {
        cell->setKey(Key);
        if (!m_extra)
            m_extra = std::make_unique<Extra>();
        m_extra->keys.insert(key.toCaseFolded(), cell);
    }
    return handle(cell);
}

lsCellPtr lsCells::Item(const QVariant &vntIndexKey) const {
    lsCell *cell = nullptr;
    switch (indexKeyKind(vntIndexKey)) {
    case IndexKeyKind::Invalid:
        throw TreeListError(TreeListError::TypeMismatch);
    case IndexKeyKind::Position:
        if (const auto pos = indexKeyPosition(vntIndexKey))
            cell = cellAt(*pos);
        break;
    case IndexKeyKind::Key:
        cell = find(vntIndexKey.toString());
        break;
    default:
        break;
    }
    if (!cell)
        throw TreeListError(TreeListError::InvalidArgument);
    return handle(cell);
}

void lsCells::Clear() {
    TreeEdits::note();
    while (m_count > 0)
        removeAt(1);
}

void lsCells::Remove(const QVariant &vntIndexKey) {
    TreeEdits::note();
    switch (indexKeyKind(vntIndexKey)) {
    case IndexKeyKind::Position: {
        const auto pos = indexKeyPosition(vntIndexKey);
        removeAt(pos ? *pos : 0);
        return;
    }
    case IndexKeyKind::Key: {
        const lsCell *cell = find(vntIndexKey.toString());
        if (!cell)
            throw TreeListError(TreeListError::InvalidArgument);
        for (qint32 position = 1; position <= m_count; ++position) {
            if (cellAt(position) == cell)
                return removeAt(position);
        }
        return;
    }
    default:
        throw TreeListError(TreeListError::TypeMismatch);
    }
}

void lsCells::forgetKey(const lsCell *cell) {
    if (m_extra)
        m_extra->keys.removeIf([cell](const auto &entry) { return entry.value() == cell; });
}

void lsCells::removeAt(qint32 position) {
    if (position < 1 || position > m_count)
        throw TreeListError(TreeListError::InvalidArgument);
    const qint32 i = slotOf(position);
    lsCell *cell = slot(i);
    forgetKey(cell);
    --m_count;
    // With no pointer out but the collection's own owner, no host can reach a cell: the later
    // ones move up and the slot is free again. Otherwise the removed cell keeps its slot.
    if (weak_from_this().use_count() == 1) {
        for (qint32 j = i; j + 1 < m_used; ++j) {
            lsCell *from = slot(j + 1);
            if (m_extra) {
                for (auto it = m_extra->keys.begin(); it != m_extra->keys.end(); ++it)
                    if (it.value() == from)
                        it.value() = slot(j);
            }
            *slot(j) = std::move(*from);
        }
        slot(--m_used)->Class_Initialize();
    } else {
        cell->m_removed = true;
    }
}
