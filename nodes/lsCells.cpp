#include "lsCells.h"

#include "TreeListError.h"

lsCell *lsCells::slot(qint32 i) const {
    if (i < kInline)
        return &m_inline[i];
    i -= kInline;
    return &m_extra->chunks[size_t(i / kChunk)][size_t(i % kChunk)];
}

qint32 lsCells::used() const {
    if (m_extra)
        return m_extra->used;
    qint32 n = 0;
    while (n < kInline && m_inline[n].m_inUse)
        ++n;
    return n;
}

qint32 lsCells::Count() const {
    if (m_extra)
        return m_extra->count;
    qint32 n = 0;
    for (qint32 i = 0; i < kInline && m_inline[i].m_inUse; ++i)
        n += !m_inline[i].m_removed;
    return n;
}

qint32 lsCells::firstReaching(qint64 X) const {
    qint32 position = 0;
    for (qint32 i = 0, inUse = used(); i < inUse; ++i) {
        const lsCell *cell = slot(i);
        if (cell->m_removed)
            continue;
        ++position;
        if (X <= qint64(cell->Left()) + cell->Width())
            return position;
    }
    return -1;
}

lsCells::Extra &lsCells::extra() {
    if (!m_extra) {
        auto extra = std::make_unique<Extra>();
        extra->used = used();
        extra->count = Count();
        m_extra = std::move(extra);
    }
    return *m_extra;
}

qint32 lsCells::slotOf(qint32 position) const {
    const qint32 inUse = used();
    if (inUse == Count())
        return position - 1;
    for (qint32 i = 0; i < inUse; ++i) {
        if (!slot(i)->m_removed && --position == 0)
            return i;
    }
    return -1;
}

lsCell *lsCells::cellAt(qint32 position) const {
    // Rows of a few cells keep them all in line: one pass over those slots finds the cell.
    if (!m_extra) {
        for (qint32 i = 0; i < kInline && m_inline[i].m_inUse; ++i)
            if (!m_inline[i].m_removed && --position == 0)
                return &m_inline[i];
        return nullptr;
    }
    if (position < 1 || position > Count())
        return nullptr;
    return slot(slotOf(position));
}

lsCellPtr lsCells::handle(lsCell *cell) const {
    // Shares ownership of the collection (or of the row it lies in) through the anchor; one not
    // held by a shared pointer hands out plain pointers that live as long as it does.
    cell->m_handedOut = true;
    std::shared_ptr<const void> anchor = m_handles.lock();
    if (!anchor) {
        try {
            anchor = std::make_shared<const std::shared_ptr<const lsCells>>(shared_from_this());
        } catch (const std::bad_weak_ptr &) {
            return lsCellPtr(lsCellsPtr(), cell);
        }
        m_handles = anchor;
    }
    return lsCellPtr(anchor, cell);
}

lsCell *lsCells::find(const QString &key) const {
    if (key.isEmpty() || !m_extra)
        return nullptr;
    return m_extra->keys.value(key.toCaseFolded());
}

lsCellPtr lsCells::Add(const QString &Title, qint16 Index, qint32 Width, const QVariant &Key) {
    return handle(append(Title, Index, Width, Key));
}

lsCell *lsCells::append(const QString &Title, qint16 Index, qint32 Width, const QVariant &Key) {
    TreeEdits::note();
    // Cells lie side by side from x = 0 in the order they were added, whatever their Index says.
    // A right edge past 32 bits is the overflow error, raised before the cell is stored.
    qint32 left = 0;
    if (const lsCell *last = cellAt(Count()))
        left = toInt32(qint64{last->Left()} + last->Width());
    const QString key = variantText(Key);
    if (find(key))
        throw TreeListError(TreeListError::DuplicateKey);

    const qint32 i = used();
    if (i >= kInline && i - kInline == qint32(extra().chunks.size()) * kChunk)
        m_extra->chunks.push_back(std::make_unique<lsCell[]>(kChunk));
    lsCell *cell = slot(i);
    cell->Class_Initialize();
    cell->m_removed = false;
    cell->m_inUse = true;
    if (m_extra) {
        ++m_extra->used;
        ++m_extra->count;
    }
    cell->setTitle(Title);
    cell->setIndex(Index);
    cell->setWidth(Width);
    cell->setLeft(left);
    if (!key.isEmpty()) {
        cell->setKey(Key);
        extra().keys.insert(key.toCaseFolded(), cell);
    }
    return cell;
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
    while (Count() > 0)
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
        for (qint32 position = 1; position <= Count(); ++position) {
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
    if (position < 1 || position > Count())
        throw TreeListError(TreeListError::InvalidArgument);
    const qint32 i = slotOf(position), inUse = used();
    lsCell *cell = slot(i);
    forgetKey(cell);
    if (m_extra)
        --m_extra->count;
    // When no host can reach the cell or a later one, the later ones move up and the slot is free
    // again; otherwise the removed cell keeps its slot. Either no handed-out pointer is left, or
    // none of these cells was ever handed out. A collection held by no shared pointer cannot
    // count its pointers: there every cell once handed out counts as reachable.
    bool reachable = !m_handles.expired() || weak_from_this().expired();
    if (reachable) {
        reachable = false;
        for (qint32 j = i; j < inUse; ++j)
            reachable = reachable || slot(j)->m_handedOut;
    }
    if (!reachable) {
        for (qint32 j = i; j + 1 < inUse; ++j) {
            lsCell *from = slot(j + 1);
            if (m_extra) {
                for (auto it = m_extra->keys.begin(); it != m_extra->keys.end(); ++it)
                    if (it.value() == from)
                        it.value() = slot(j);
            }
            *slot(j) = std::move(*from);
        }
        lsCell *freed = slot(inUse - 1);
        freed->Class_Initialize();
        freed->m_inUse = false;
        if (m_extra)
            --m_extra->used;
    } else {
        cell->m_removed = true;
    }
}
