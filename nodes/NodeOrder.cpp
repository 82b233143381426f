#include "NodeOrder.h"

#include "IndexKey.h"
#include "TreeListError.h"

#include <cassert>

NodeOrder::~NodeOrder() {
    clear();
}

void NodeOrder::link(const lsNode *previous, const lsNodePtr &row) {
    // Work put off was recorded against the rows as they were.
    m_visibility.resolvePending();
    m_tree.insertAfter(previous, row);
}

const lsNodePtr *NodeOrder::slot(qint32 position) const {
    if (!m_apart)
        return m_tree.slotAt(position);
    if (position < 1 || position > qint32(m_positions.size()))
        return nullptr;
    return &m_positions[size_t(position - 1)];
}

lsNodePtr NodeOrder::item(const QVariant &indexKey) const {
    switch (indexKeyKind(indexKey)) {
    case IndexKeyKind::Position: {
        const auto pos = indexKeyPosition(indexKey);
        return pos ? at(*pos) : nullptr;
    }
    case IndexKeyKind::Key: {
        const lsNode *row = m_keys.find(indexKey.toString());
        return row ? RowSequence::slotOf(row) : nullptr;
    }
    default:
        return nullptr;
    }
}

void NodeOrder::store(const lsNodePtr &row, const QString &key) {
    if (m_keys.find(key)) {
        if (!m_apart)
            keepApart(row.get());
        throw TreeListError(TreeListError::DuplicateKey);
    }
    if (m_apart) {
        const qint32 before = row->Index();
        if (before >= 1 && before <= count())
            m_positions.insert(m_positions.begin() + (before - 1), row);
        else
            m_positions.push_back(row);
    }
    if (!key.isEmpty()) {
        // Keys are compared as text; a number is kept as its text so it need not be made again.
        if (row->Key().typeId() != QMetaType::QString)
            row->pinKey();
        row->m_keyed = true;
        m_keys.insert(row.get());
    }
}

void NodeOrder::keepApart(const lsNode *unstored) {
    m_positions.reserve(size_t(m_tree.size()));
    for (qint32 rank = 1; rank <= m_tree.size(); ++rank) {
        const lsNodePtr &row = *m_tree.slotAt(rank);
        if (row.get() != unstored)
            m_positions.push_back(row);
    }
    m_apart = true;
}

void NodeOrder::dropKey(lsNode *row) {
    if (!row->m_keyed)
        return;
    m_keys.erase(row);
    row->m_keyed = false;
    row->m_keyPinned = false;
}

void NodeOrder::unlinkRun(const lsNode *top, qint32 rows) {
    const qint32 first = RowSequence::rankOf(top);
    if (!m_apart) {
        for (qint32 rank = first; rank < first + rows; ++rank) {
            dropKey(m_tree.rowAt(rank));
        }
    }
    // Rows that leave keep the visibility they have now.
    m_visibility.resolvePending();
    m_tree.removeRun(first, rows, m_puts);
    if (m_apart && m_positions.empty() && m_tree.size() == 0)
        m_apart = false;
}

void NodeOrder::removeAt(qint32 position) {
    assert(m_apart && position >= 1 && position <= count());
    const auto it = m_positions.begin() + (position - 1);
    dropKey(it->get());
    m_positions.erase(it);
}

qint32 NodeOrder::renumber() {
    m_puts.clear();
    return m_tree.size() + 1;
}

void NodeOrder::clear() {
    m_keys.clear();
    m_positions.clear();
    m_apart = false;
    m_visibility.resolvePending();
    m_tree.clear(m_puts);
}

qint32 NodeOrder::visibleUpTo(qint32 position) const {
    m_visibility.resolvePending();
    if (!m_apart)
        return m_tree.visibleUpTo(position);
    qint32 visible = 0;
    for (qint32 i = 0; i < position && i < count(); ++i)
        visible += m_positions[size_t(i)]->Visible();
    return visible;
}

lsNodePtr NodeOrder::visibleRow(qint32 k) const {
    m_visibility.resolvePending();
    if (!m_apart) {
        const lsNode *row = m_tree.visibleRow(k);
        return row ? RowSequence::slotOf(row) : nullptr;
    }
    for (const lsNodePtr &row : m_positions) {
        if (row->Visible() && --k == 0)
            return row;
    }
    return nullptr;
}

void NodeOrder::visibleRows(qint32 k, qint32 count, std::vector<lsNodePtr> &out) const {
    m_visibility.resolvePending();
    if (!m_apart) {
        m_tree.visibleRows(k, count, out);
        return;
    }
    for (const lsNodePtr &row : m_positions) {
        if (count == 0)
            return;
        if (row->Visible() && --k <= 0) {
            out.push_back(row);
            --count;
        }
    }
}

void NodeOrder::visibleChanged(const lsNode &row, bool visible) {
    RowSequence::visibleChanged(&row, visible);
}

void NodeOrder::unsettle(lsNode &row) {
    RowSequence::unsettle(&row);
}

qint32 NodeOrder::indexOf(const lsNode &row) const {
    if (const std::optional<qint32> put = m_puts.find(&row))
        return *put;
    return RowSequence::rankOf(&row);
}

void NodeOrder::check() const {
#ifndef NDEBUG
    m_tree.check();
    m_visibility.check();
    m_puts.forEachRow([this](const lsNode *row) { assert(m_tree.contains(row)); });
    qint32 keyed = 0;
    for (qint32 rank = 1; rank <= m_tree.size(); ++rank) {
        lsNode *row = m_tree.rowAt(rank);
        keyed += row->m_keyed;
        assert(!row->m_keyed || m_keys.find(row->storedKey()) == row);
    }
    assert(keyed == m_keys.size());
    for (const lsNodePtr &row : m_positions)
        assert(m_tree.contains(row.get()));
#endif
}
