#include "lsNode.h"

#include "IndexKey.h"
#include "RowAllocation.h"
#include "TreeListError.h"

#include <limits>
#include <mutex>
#include <unordered_map>

quint64 lsNode::s_displayedPuts = 0;
quint64 lsNode::s_flagPuts = 0;

struct lsNode::Rare {
    QString fullPath;
    // The key the collection stored the row under, once a host changed `Key` after that.
    QString storedKey;
    // A key that is not text.
    QVariant key;
    // Cells a host set, or made on first use by a node that has none of its own.
    lsCellsPtr cells;
};

namespace {

// The rare values of every node that has any, by node. Few nodes have them, so a table beside
// the nodes costs less than a pointer in each. Nodes may live on any thread: one lock guards it.
// The values' type is the node's own, passed in so the table needs no access to the node.
template <typename Rare> class RareTable {
public:
    Rare *find(const lsNode *node) {
        const std::lock_guard lock(m_mutex);
        const auto it = m_rare.find(node);
        return it == m_rare.end() ? nullptr : it->second.get();
    }
    Rare &make(const lsNode *node) {
        const std::lock_guard lock(m_mutex);
        std::unique_ptr<Rare> &rare = m_rare[node];
        if (!rare)
            rare = std::make_unique<Rare>();
        return *rare;
    }
    // Takes the node's values out of the table; they are destroyed after the lock is let go,
    // since cells they hold may take other nodes with them.
    std::unique_ptr<Rare> take(const lsNode *node) {
        const std::lock_guard lock(m_mutex);
        const auto it = m_rare.find(node);
        if (it == m_rare.end())
            return nullptr;
        std::unique_ptr<Rare> rare = std::move(it->second);
        m_rare.erase(it);
        return rare;
    }

private:
    std::mutex m_mutex;
    std::unordered_map<const lsNode *, std::unique_ptr<Rare>> m_rare;
};

// Never destroyed: nodes held in static objects of a host may go after it would have.
template <typename Rare> RareTable<Rare> &rareTable() {
    static RareTable<Rare> *const table = new RareTable<Rare>;
    return *table;
}

} // namespace

lsNode::~lsNode() {
    // A long sibling chain owns itself link by link; unwinding it here iteratively keeps the
    // destruction of a 100 000-row flat list from recursing once per row.
    lsNodePtr next = std::move(m_NextSibling);
    while (next && next.use_count() == 1)
        next = std::move(next->m_NextSibling);
    if (m_hasRare)
        rareTable<Rare>().take(this);
}

lsCellsPtr lsNode::Cells() {
    if (m_cellsEmbedded)
        return static_cast<RowAllocation *>(this)->shared_from_this();
    Rare &r = rare();
    if (!r.cells)
        r.cells = std::make_shared<lsCells>();
    return r.cells;
}

lsCells &lsNode::borrowCells() {
    if (m_cellsEmbedded)
        return *static_cast<RowAllocation *>(this);
    return *Cells();
}

const lsCells *lsNode::cellsIfMade() const {
    if (m_cellsEmbedded)
        return static_cast<const RowAllocation *>(this);
    const Rare *r = rareIfAny();
    return r ? r->cells.get() : nullptr;
}

void lsNode::setCells(lsCellsPtr cells) {
    TreeEdits::note();
    // The row's own cells given back: holding them by pointer would make the row own itself.
    if (m_ownsCells && cells.get() == static_cast<lsCells *>(static_cast<RowAllocation *>(this))) {
        m_cellsEmbedded = true;
        if (m_hasRare)
            rare().cells.reset();
        return;
    }
    m_cellsEmbedded = false;
    rare().cells = std::move(cells);
}

qint32 lsNode::Width() {
    const lsCells &cells = borrowCells();
    qint64 sum = 0;
    const qint32 count = cells.Count();
    // The cell loop counter is 16-bit: a row of more than 32767 cells overflows.
    toInt16(count);
    for (qint32 j = 1; j <= count; ++j) {
        sum += cells.cell(j)->Width();
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
    if (RowOwner *collection = owner())
        collection->resolvePending();
    return m_Visible;
}

void lsNode::setVisible(bool v) {
    TreeEdits::note();
    RowOwner *collection = owner();
    // A deferred recomputation must run against the values from before this put.
    if (collection)
        collection->resolvePending();
    if (v == m_Visible)
        return;
    putVisible(v);
    // Rows below took their visibility from the old value; the next recomputation must see them.
    if (collection)
        collection->unsettle(*this);
}

void lsNode::putVisible(bool v) {
    if (v == m_Visible)
        return;
    m_Visible = v;
    if (RowOwner *collection = owner())
        collection->visibleChanged(*this, v);
}

void lsNode::setExpanded(bool v) {
    TreeEdits::note();
    RowOwner *collection = owner();
    if (collection)
        collection->resolvePending();
    if (v == m_Expanded)
        return;
    m_Expanded = v;
    if (collection)
        collection->unsettle(*this);
}

qint32 lsNode::Index() const {
    return m_inSequence ? m_holder->owner->indexOf(*this) : m_Index;
}

void lsNode::setIndex(qint32 v) {
    TreeEdits::note();
    if (m_inSequence)
        m_holder->owner->putIndex(*this, v);
    else
        m_Index = v;
}

const QString &lsNode::FullPath() const {
    static const QString none;
    const Rare *r = rareIfAny();
    return r ? r->fullPath : none;
}

void lsNode::setFullPath(const QString &v) {
    TreeEdits::note();
    if (m_hasRare || !v.isNull())
        rare().fullPath = v;
}

lsNode::Rare &lsNode::rare() {
    if (m_hasRare)
        return *rareTable<Rare>().find(this);
    Rare &r = rareTable<Rare>().make(this);
    m_hasRare = true;
    return r;
}

const lsNode::Rare *lsNode::rareIfAny() const {
    return m_hasRare ? rareTable<Rare>().find(this) : nullptr;
}

QVariant lsNode::Key() const {
    switch (m_keyKind) {
    case KeyKind::Text:
        return QVariant(m_keyText);
    case KeyKind::Other:
        return rareIfAny()->key;
    default:
        return QVariant();
    }
}

void lsNode::setKey(const QVariant &v) {
    TreeEdits::note();
    // The collection keeps finding the row under the key it was stored with.
    if (m_keyed)
        pinKey();
    if (v.typeId() == QMetaType::QString) {
        m_keyText = *static_cast<const QString *>(v.constData());
        m_keyKind = KeyKind::Text;
        if (m_hasRare)
            rare().key = QVariant();
    } else if (v.isValid()) {
        m_keyText = QString();
        rare().key = v;
        m_keyKind = KeyKind::Other;
    } else {
        m_keyText = QString();
        if (m_hasRare)
            rare().key = QVariant();
        m_keyKind = KeyKind::None;
    }
}

void lsNode::pinKey() {
    if (!m_keyPinned) {
        rare().storedKey = variantText(Key());
        m_keyPinned = true;
    }
}

const QString &lsNode::storedKey() const {
    // A key that is not text is pinned as text when stored (see NodeOrder::store).
    return m_keyPinned ? rareIfAny()->storedKey : m_keyText;
}
