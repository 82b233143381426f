#include "lsNode.h"

#include "IndexKey.h"
#include "RowSequence.h"
#include "TreeListError.h"

#include <limits>

lsNode::~lsNode() {
    // A long sibling chain owns itself link by link; unwinding it here iteratively keeps the
    // destruction of a 100 000-row flat list from recursing once per row.
    lsNodePtr next = std::move(m_NextSibling);
    while (next && next.use_count() == 1)
        next = std::move(next->m_NextSibling);
}

const lsCellsPtr &lsNode::Cells() {
    if (!m_Cells)
        m_Cells = std::make_shared<lsCells>();
    return m_Cells;
}

qint32 lsNode::Width() {
    const lsCellsPtr &cells = Cells();
    qint64 sum = 0;
    const qint32 count = cells->Count();
    // The cell loop counter is 16-bit: a row of more than 32767 cells overflows.
    toInt16(count);
    for (qint32 j = 1; j <= count; ++j) {
        sum += cells->cell(j)->Width();
        if (sum > std::numeric_limits<qint32>::max() || sum < std::numeric_limits<qint32>::min())
            throw TreeListError(TreeListError::Overflow);
    }
    return static_cast<qint32>(sum);
}

void lsNode::clearLinks() {
    m_Parent.reset();
    m_Child.reset();
    m_LastChild.reset();
    m_NextSibling.reset();
    m_PrevSibling.reset();
}

bool lsNode::Visible() const {
    if (m_block)
        m_block->owner->resolvePending();
    return m_Visible;
}

void lsNode::setVisible(bool v) {
    TreeEdits::note();
    // A deferred recomputation must run against the values from before this put.
    if (m_block)
        m_block->owner->resolvePending();
    if (v == m_Visible)
        return;
    putVisible(v);
    // Rows below took their visibility from the old value; the next recomputation must see them.
    if (m_block)
        RowSequence::unsettle(this);
}

void lsNode::putVisible(bool v) {
    if (v == m_Visible)
        return;
    m_Visible = v;
    if (m_block)
        RowSequence::visibleChanged(this, v);
}

void lsNode::setExpanded(bool v) {
    TreeEdits::note();
    if (m_block)
        m_block->owner->resolvePending();
    if (v == m_Expanded)
        return;
    m_Expanded = v;
    if (m_block)
        RowSequence::unsettle(this);
}

qint32 lsNode::Index() const {
    return m_block && !m_indexPut ? RowSequence::rankOf(this) : m_Index;
}

void lsNode::setIndex(qint32 v) {
    TreeEdits::note();
    m_Index = v;
    if (m_block)
        RowSequence::indexPut(this);
}

const QString &lsNode::FullPath() const {
    static const QString none;
    return m_rare ? m_rare->fullPath : none;
}

void lsNode::setFullPath(const QString &v) {
    TreeEdits::note();
    if (m_rare || !v.isNull())
        rare().fullPath = v;
}

lsNode::Rare &lsNode::rare() {
    if (!m_rare)
        m_rare = std::make_unique<Rare>();
    return *m_rare;
}

void lsNode::setKey(const QVariant &v) {
    TreeEdits::note();
    // The collection keeps finding the row under the key it was stored with.
    if (m_keyed)
        pinKey();
    m_Key = v;
}

void lsNode::pinKey() {
    if (!m_keyPinned) {
        rare().storedKey = variantText(m_Key);
        m_keyPinned = true;
    }
}

const QString &lsNode::storedKey() const {
    // A key that is not text is pinned as text when stored (see NodeOrder::store).
    return m_keyPinned ? m_rare->storedKey : *static_cast<const QString *>(m_Key.constData());
}
