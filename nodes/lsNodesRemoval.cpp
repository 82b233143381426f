// lsNodes: removal. A row leaves with its subtree; rows that leave keep their `Index` and `Flag`
// and lose their links, so rows a host still holds stand alone.

#include "lsNodes.h"

#include "TreeListError.h"
#include "TreeWalk.h"

#include <vector>

namespace {

// Every row reachable from `root` through its downward and rightward links, held so that
// breaking links one row at a time frees nothing that is still to be visited.
std::vector<lsNodePtr> reachableRows(const lsNodePtr &root) {
    std::vector<lsNodePtr> rows;
    std::vector<lsNodePtr> pending{root};
    while (!pending.empty()) {
        lsNodePtr node = std::move(pending.back());
        pending.pop_back();
        if (!node)
            continue;
        pending.push_back(node->NextSibling());
        pending.push_back(node->Child());
        rows.push_back(std::move(node));
    }
    return rows;
}

} // namespace
bool lsNodes::Remove(const QVariant &IndexKey) {
    TreeEdits::note();
    // Rows that leave keep the visibility they have now.
    m_order.resolvePending();
    ClearFlags();
    const lsNodePtr target = Item(IndexKey);
    if (!target)
        return false;
    std::vector<lsNode *> subtree;
    // Until the subtree has left, rows of the collection carry the flag.
    m_flagsLeft = true;
    for (lsNode *node = target.get(); node; node = TreeWalk::nextInSubtree(node, target.get())) {
        TreeEdits::note();
        node->m_Flag = true;
        subtree.push_back(node);
    }

    // The loop counter is 16-bit: above 32767 rows this throws before anything is unlinked.
    const qint16 last = toInt16(m_count);
    const auto drop = [this](lsNode *node) {
        unlink(node);
        // A row that is still the selected row lost its flag to a later selection of hidden
        // rows; the reference is dropped all the same, so it never names a removed row.
        if (node->Selected() || node == m_selectedRow.get()) {
            m_selectedRow.reset();
            m_selectedCell.reset();
        }
        --m_count;
    };
    if (!m_order.apart()) {
        // Positions are tree order: the flagged rows are the subtree's run, and taking it from
        // its end backwards unlinks them in the order of a scan from the last position down.
        for (auto it = subtree.rbegin(); it != subtree.rend(); ++it)
            drop(*it);
    } else {
        for (qint16 i = last; i >= 1; --i) {
            const lsNodePtr node = m_order.at(i);
            if (!node || !node->Flag())
                continue;
            drop(node.get());
            // Walking down from the end, the row at i is the one just taken, whatever its key.
            m_order.removeAt(i);
        }
    }
    m_order.unlinkRun(target.get(), qint32(subtree.size()));
    m_flagsLeft = false;

    if (m_count > 0) {
        m_tail = m_order.at(m_order.count());
    } else {
        m_root.reset();
        m_tail.reset();
        m_walkStart.reset();
        m_cursor.reset();
    }
    ReIndex();
    return true;
}

void lsNodes::unlink(lsNode *node) {
    const lsNodePtr prev = node->PrevSibling();
    const lsNodePtr next = node->NextSibling();
    const lsNodePtr parent = node->Parent();
    if (prev)
        prev->setNextSibling(next);
    if (next)
        next->setPrevSibling(prev);
    if (parent) {
        if (parent->Child().get() == node)
            parent->setChild(next);
        if (parent->LastChild().get() == node)
            parent->setLastChild(prev);
    }
    // The first top-level row hands its place to the next one, so numbering still starts at
    // the first row.
    if (m_root.get() == node)
        m_root = next;
    if (m_lastTop.get() == node)
        m_lastTop = prev;
    node->clearLinks();
}

void lsNodes::ClearFlags() {
    TreeEdits::note();
    // The rows the collection flags leave it when the removal goes through: while that held and
    // no flag was put by hand, no row of the collection carries one.
    if (!m_flagsLeft && lsNode::s_flagPuts == m_flagPuts)
        return;
    for (lsNode *node = m_root.get(); node; node = TreeWalk::next(node))
        node->setFlag(false);
    m_flagsLeft = false;
    m_flagPuts = lsNode::s_flagPuts;
}

void lsNodes::Clear() {
    TreeEdits::note();
    // The same end as removing the first top-level row with its subtree until none is left, in
    // one pass instead of one renumbering per top-level row: removal's 16-bit counter overflows
    // before anything changes, and every row ends flagged, unlinked and numbered as it was when
    // its top-level row went, that is from 1 within that row's subtree. releaseAll then breaks
    // the links, including those of a row that a duplicate key kept out of the positions.
    toInt16(m_count);
    // Out of the order first, so the numbers below are the rows' own and not a host's put.
    m_order.clear();
    for (lsNodePtr top = m_root; top; top = top->NextSibling()) {
        qint32 index = 1;
        for (lsNode *node = top.get(); node; node = TreeWalk::nextInSubtree(node, top.get())) {
            node->setIndex(index++);
            TreeEdits::note();
            node->m_Flag = true;
        }
    }
    releaseAll();
}

void lsNodes::releaseAll() {
    m_order.resolvePending();
    const std::vector<lsNodePtr> rows = reachableRows(m_root);
    m_order.clear();
    for (const lsNodePtr &row : rows)
        row->clearLinks();
    m_count = 0;
    m_root.reset();
    m_tail.reset();
    m_lastTop.reset();
    m_walkStart.reset();
    m_cursor.reset();
    m_selectedRow.reset();
    m_selectedCell.reset();
}
