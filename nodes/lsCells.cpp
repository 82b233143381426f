#include "lsCells.h"

#include "TreeListError.h"

#include <algorithm>

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

qint32 lsCells::slotIndex(const lsCell *cell) const {
    if (cell >= m_inline && cell < m_inline + kInline)
        return qint32(cell - m_inline);
    const auto &chunks = m_extra->chunks;
    for (size_t c = 0; c < chunks.size(); ++c) {
        const lsCell *first = chunks[c].get();
        if (cell >= first && cell < first + kChunk)
            return kInline + qint32(c) * kChunk + qint32(cell - first);
    }
    return -1;
}

lsCells::Anchor::~Anchor() {
    // The last pointer to the cell is going: this anchor has expired, as has any other the
    // collection still lists, so the lists can let go of them (and of their memory).
    if (owner->m_held.expired())
        owner->m_held.reset();
    if (owner->m_extra)
        std::erase_if(owner->m_extra->held, [](const HeldCell &h) { return h.expired(); });
}

lsCellPtr lsCells::handle(lsCell *cell) const {
    // A collection no shared pointer holds hands out plain pointers that live as long as it
    // does; it cannot count them, so the cell is marked as held for good.
    if (weak_from_this().expired()) {
        cell->m_handedOut = true;
        return lsCellPtr(lsCellsPtr(), cell);
    }
    // Pointers to a cell already held share its anchor.
    const auto anchorOf = [cell](const HeldCell &held) {
        std::shared_ptr<const Anchor> anchor = held.lock();
        return anchor && anchor->cell == cell ? anchor : nullptr;
    };
    std::shared_ptr<const Anchor> anchor = anchorOf(m_held);
    for (size_t i = 0; !anchor && m_extra && i < m_extra->held.size(); ++i)
        anchor = anchorOf(m_extra->held[i]);
    if (anchor)
        return lsCellPtr(anchor, cell);

    anchor = std::make_shared<const Anchor>(shared_from_this(), cell);
    if (m_held.expired()) {
        m_held = anchor;
    } else {
        // Handing a cell out changes none of the cells, but a second one held at once needs
        // the extra block.
        std::vector<HeldCell> &held = const_cast<lsCells *>(this)->extra().held;
        std::erase_if(held, [](const HeldCell &h) { return h.expired(); });
        held.push_back(anchor);
    }
    return lsCellPtr(anchor, cell);
}

qint32 lsCells::reachableEnd() const {
    // One past the last slot whose cell a pointer may still reach: nothing before it may move.
    qint32 end = 0;
    if (weak_from_this().expired()) {
        for (qint32 i = 0, inUse = used(); i < inUse; ++i)
            if (slot(i)->m_handedOut)
                end = i + 1;
        return end;
    }
    const auto reach = [&](const HeldCell &held) {
        if (const std::shared_ptr<const Anchor> anchor = held.lock())
            end = std::max(end, slotIndex(anchor->cell) + 1);
    };
    reach(m_held);
    if (m_extra) {
        std::erase_if(m_extra->held, [](const HeldCell &h) { return h.expired(); });
        for (const HeldCell &held : m_extra->held)
            reach(held);
    }
    return end;
}

void lsCells::compact() {
    // Removed cells past the last held one give their slots back: the cells after them move up,
    // which no pointer can see, and the slots at the end are free again.
    const qint32 inUse = used();
    qint32 to = reachableEnd();
    for (qint32 from = to; from < inUse; ++from) {
        lsCell *cell = slot(from);
        if (cell->m_removed)
            continue;
        if (from != to) {
            lsCell *into = slot(to);
            if (m_extra) {
                for (auto it = m_extra->keys.begin(); it != m_extra->keys.end(); ++it)
                    if (it.value() == cell)
                        it.value() = into;
            }
            *into = std::move(*cell);
        }
        ++to;
    }
    for (qint32 j = to; j < inUse; ++j) {
        lsCell *freed = slot(j);
        freed->Class_Initialize();
        freed->m_removed = false;
        freed->m_inUse = false;
    }
    if (m_extra)
        m_extra->used = to;
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

    // Removed cells whose pointers have all gone since give their slots back first.
    if (used() != Count())
        compact();
    const qint32 i = used();
    if (i >= kInline && i - kInline == qint32(extra().chunks.size()) * kChunk)
        m_extra->chunks.push_back(std::make_unique<lsCell[]>(kChunk));
    lsCell *cell = slot(i);
    cell->Class_Initialize();
    cell->m_removed = false;
    cell->m_inUse = true;
    cell->m_handedOut = false;
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
    // Every cell at once, so the slots are given back in one pass.
    for (qint32 i = 0, inUse = used(); i < inUse; ++i)
        slot(i)->m_removed = true;
    if (m_extra) {
        m_extra->keys.clear();
        m_extra->count = 0;
    }
    compact();
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
    lsCell *cell = slot(slotOf(position));
    forgetKey(cell);
    if (m_extra)
        --m_extra->count;
    cell->m_removed = true;
    compact();
}
