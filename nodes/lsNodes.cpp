#include "lsNodes.h"

#include "RowAllocation.h"
#include "RowSequence.h"
#include "TreeListError.h"

#include <vector>

namespace {

// The node after `node`'s subtree in a pre-order walk that never leaves the subtree of `top`.
lsNode *nextPastSubtree(const lsNode *node, const lsNode *top) {
    while (node && node != top) {
        if (node->NextSibling())
            return node->NextSibling().get();
        node = node->Parent().get();
    }
    return nullptr;
}

// The node after `node` in a pre-order walk that never leaves the subtree of `top`.
lsNode *nextInSubtree(const lsNode *node, const lsNode *top) {
    return node->Child() ? node->Child().get() : nextPastSubtree(node, top);
}

// The last row of `node`'s subtree in pre-order.
const lsNode *lastInSubtree(const lsNode *node) {
    while (node->LastChild())
        node = node->LastChild().get();
    return node;
}

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

lsNodes::lsNodes(QObject *parent) : QObject(parent) {}

lsNodes::~lsNodes() {
    releaseAll();
}

lsNodePtr lsNodes::Add(const QVariant &Relative, qint32 &Relationship, const QVariant &Key,
                       const QString &Text, const QVariant &Image, const QVariant &SelectedSmage) {
    TreeEdits::note();
    Q_UNUSED(Image)
    Q_UNUSED(SelectedSmage)
    // Both checks run before the tree changes: a key the keyed collection cannot take, or a
    // relationship that places the row nowhere, would otherwise leave a row half added.
    if (indexKeyKind(Key) == IndexKeyKind::Invalid)
        throw TreeListError(TreeListError::TypeMismatch);
    const bool empty = !m_root;
    if (!empty && (Relationship < lsFirst || Relationship > lsChild))
        throw TreeListError(TreeListError::InvalidArgument);

    // Deferred visibility work ran against the tree as it was; a new row must not be part of it.
    m_order.tree().resolvePending();
    lsNodePtr node = std::make_shared<RowAllocation>();
    node->setKey(Key);
    node->setText(Text);
    node->setIndex(1);
    node->setSelected(false);
    node->setVisible(true);
    // Rows made here start collapsed, unlike a bare lsNode.
    node->setExpanded(false);

    if (empty) {
        m_root = node;
        m_lastTop = node;
        m_count = 1;
        m_order.link(nullptr, node);
    } else {
        lsNodePtr relative = Item(Relative);
        if (!relative)
            relative = m_root;
        ++m_count;
        if (Relationship == lsFirst || Relationship == lsLast)
            Relationship = lsNext;
        m_order.link(link(node, relative, Relationship), node);
        if (const lsNodePtr parent = node->Parent()) {
            node->putVisible(parent->Expanded());
            // Under an open parent that is itself hidden the row is shown against the rule; the
            // next recomputation that reaches it must put that right. (Nothing is put off at
            // this point, so the parent's own value is current.)
            if (parent->Expanded() && !parent->m_Visible)
                RowSequence::unsettle(node.get());
        }
    }

    ReIndex();
    // A duplicate key throws here, after the row is linked and counted: hosts see the row in the
    // tree but cannot name it.
    m_order.store(node, variantText(Key));
    m_tail = m_order.at(m_order.count());
    return node;
}

lsNodePtr lsNodes::Add(const QVariant &Relative, lsRelationshipConstants Relationship,
                       const QVariant &Key, const QString &Text, const QVariant &Image,
                       const QVariant &SelectedSmage) {
    qint32 relationship = Relationship;
    return Add(Relative, relationship, Key, Text, Image, SelectedSmage);
}

const lsNode *lsNodes::link(const lsNodePtr &node, const lsNodePtr &relative, qint32 relationship) {
    // Each case reads only the links it changes: a neighbour's row that is not needed is not
    // visited, which keeps loads that add under scattered parents from touching more memory.
    switch (relationship) {
    case lsNext: {
        const lsNodePtr next = relative->NextSibling();
        const lsNodePtr parent = relative->Parent();
        node->setPrevSibling(relative);
        node->setNextSibling(next);
        if (next)
            next->setPrevSibling(node);
        relative->setNextSibling(node);
        if (!next && parent)
            parent->setLastChild(node);
        if (!next && !parent)
            m_lastTop = node;
        node->setIdentLevel(relative->IdentLevel());
        node->setParent(parent);
        return lastInSubtree(relative.get());
    }
    case lsPrevious: {
        const lsNodePtr prev = relative->PrevSibling();
        const lsNodePtr parent = relative->Parent();
        node->setNextSibling(relative);
        node->setPrevSibling(prev);
        if (prev)
            prev->setNextSibling(node);
        relative->setPrevSibling(node);
        if (!prev) {
            if (parent)
                parent->setChild(node);
            else
                m_root = node;
        }
        node->setIdentLevel(relative->IdentLevel());
        node->setParent(parent);
        return prev ? lastInSubtree(prev.get()) : parent.get();
    }
    default: { // lsChild
        const lsNodePtr lastChild = relative->LastChild();
        const lsNode *previous = lastChild ? lastInSubtree(lastChild.get()) : relative.get();
        if (lastChild) {
            lastChild->setNextSibling(node);
            node->setPrevSibling(lastChild);
            node->setIdentLevel(lastChild->IdentLevel());
        } else {
            relative->setChild(node);
            node->setIdentLevel(relative->IdentLevel() + 1);
        }
        node->setParent(relative);
        relative->setLastChild(node);
        return previous;
    }
    }
}

lsNodePtr lsNodes::Item(const QVariant &IndexKey) const {
    return m_order.item(IndexKey);
}

lsNodePtr lsNodes::Nodes(const QVariant &vntIndexKey) const {
    return Item(vntIndexKey);
}

std::vector<lsNodePtr> lsNodes::VisibleRowsFrom(qint32 k, qint32 count) const {
    std::vector<lsNodePtr> rows;
    rows.reserve(size_t(std::max(count, 0)));
    m_order.visibleRows(k, count, rows);
    return rows;
}

lsNodePtr lsNodes::SetFirstNode(const QVariant &IndexKey) {
    lsNodePtr start = isEmptyText(IndexKey) ? m_root : Item(IndexKey);
    if (!start)
        start = m_root;
    m_walkStart = start;
    m_cursor = start;
    return start;
}

lsNodePtr lsNodes::GetPrevNode(const lsNodePtr &Node, bool OnlyVisibleNode) const {
    if (!Node || Node->Index() <= 1)
        return nullptr;
    // Stepping by position rather than by each row's Index ends even when a row kept out of the
    // positions by a duplicate key has shifted the numbering.
    qint32 position = Node->Index() - 1;
    lsNodePtr prev = m_order.at(position);
    if (!OnlyVisibleNode)
        return prev;
    while (prev && !prev->Displayed() && position > 1)
        prev = m_order.at(--position);
    return prev;
}

lsNodePtr lsNodes::GetNextNode(bool OnlyVisibleNode) {
    if (!m_walkStart || !m_cursor) {
        m_walkStart = m_root;
        m_cursor = m_root;
        return m_root;
    }
    const lsNodePtr *link = NodeOrder::nextLink(m_cursor.get());
    // A hidden row is passed over, but its children are still looked at in turn.
    while (link && OnlyVisibleNode && !(*link)->Visible())
        link = NodeOrder::nextLink(link->get());
    if (link) {
        lsNodePtr next = *link;
        m_cursor = std::move(next);
        return m_cursor;
    }
    m_walkStart.reset();
    m_cursor.reset();
    return nullptr;
}

qint32 lsNodes::ReIndex() {
    TreeEdits::note();
    return m_order.renumber();
}

void lsNodes::setExpanded(const lsNodePtr &Node, bool value) {
    TreeEdits::note();
    if (!Node)
        return;
    // Another collection's row: its own put-off work runs against the old value first.
    if (Node->block() && !m_order.tree().contains(Node.get()))
        Node->block()->owner->resolvePending();
    Node->putExpanded(value);
    SetVisibility(Node);
}

bool lsNodes::Expanded(const lsNodePtr &Node) const {
    return Node && Node->Expanded();
}

bool lsNodes::Remove(const QVariant &IndexKey) {
    TreeEdits::note();
    // Rows that leave keep the visibility they have now.
    m_order.tree().resolvePending();
    ClearFlags();
    const lsNodePtr target = Item(IndexKey);
    if (!target)
        return false;
    std::vector<lsNode *> subtree;
    // Until the subtree has left, rows of the collection carry the flag.
    m_flagsLeft = true;
    for (lsNode *node = target.get(); node; node = nextInSubtree(node, target.get())) {
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
    for (lsNode *node = m_root.get(); node; node = NodeOrder::nextInPreOrder(node))
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
        for (lsNode *node = top.get(); node; node = nextInSubtree(node, top.get())) {
            node->setIndex(index++);
            TreeEdits::note();
            node->m_Flag = true;
        }
    }
    releaseAll();
}

void lsNodes::releaseAll() {
    m_order.tree().resolvePending();
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

lsNodePtr lsNodes::GetLastSibling(const lsNodePtr &Node) const {
    if (!Node || !Node->NextSibling())
        return nullptr;
    // Links of rows this collection holds are kept whole; a row of another collection or one a
    // host linked by hand is followed along its chain.
    if (m_order.tree().contains(Node.get())) {
        const lsNodePtr parent = Node->Parent();
        return parent ? parent->LastChild() : m_lastTop;
    }
    lsNodePtr last = Node->NextSibling();
    while (last->NextSibling())
        last = last->NextSibling();
    return last;
}

QString lsNodes::FindPath(const lsNodePtr &Node) const {
    if (!Node)
        return QString();
    QString path = Node->Text();
    for (lsNodePtr up = Node->Parent(); up; up = up->Parent())
        path = up->Text() + QLatin1Char('\\') + path;
    return path;
}

bool lsNodes::SetVisibility(const lsNodePtr &Node) {
    TreeEdits::note();
    if (!Node)
        return false;
    RowSequence &tree = m_order.tree();
    if (!tree.contains(Node.get())) {
        // A row of another collection or out of any: walk to the end of its tree as its links go.
        for (lsNode *node = Node.get(); node; node = NodeOrder::nextInPreOrder(node)) {
            const lsNodePtr parent = node->Parent();
            node->putVisible(!parent || (parent->Visible() && parent->Expanded()));
        }
    } else if (Node->Child() && !unsettledFrom(Node.get())) {
        // Every row after `Node` agrees with its parent, so the walk to the end would change the
        // subtree only. That is done when a visibility is next read, so a batch of openings and
        // closings without reads in between costs only what its last state needs.
        tree.deferRecompute(Node.get());
    } else {
        tree.resolvePending();
        settleAfter(Node.get(), RowSequence::recompute(Node.get()));
    }
    // The walk ran on the shared cursor and ended, so a walk in progress is gone.
    m_walkStart.reset();
    m_cursor.reset();
    return false;
}

bool lsNodes::unsettledFrom(const lsNode *node) const {
    const RowSequence &tree = m_order.tree();
    if (tree.unsettledCount() == 0)
        return false;
    for (lsNodePtr up = node->Parent(); up; up = up->Parent()) {
        if (up->m_unsettled)
            return true;
    }
    return tree.firstUnsettledFrom(RowSequence::rankOf(node)) != nullptr;
}

void lsNodes::settleAfter(const lsNode *node, qint32 subtreeRows) {
    // Recomputing every row after `node`'s subtree would change only rows marked unsettled and
    // their subtrees: any other row agrees with its parent, whose value does not change. An
    // unsettled ancestor covers the rest of its subtree; other marked rows lie further on.
    RowSequence &tree = m_order.tree();
    const lsNode *top = nullptr;
    for (lsNodePtr up = node->Parent(); up; up = up->Parent()) {
        if (up->m_unsettled)
            top = up.get();
    }
    qint32 from = RowSequence::rankOf(node) + subtreeRows;
    if (top) {
        for (lsNode *row = nextPastSubtree(node, top); row; row = nextInSubtree(row, top)) {
            const lsNodePtr parent = row->Parent();
            row->putVisible(parent->Visible() && parent->Expanded());
            RowSequence::settle(row);
            ++from;
        }
    }
    while (lsNode *row = tree.firstUnsettledFrom(from)) {
        from = RowSequence::rankOf(row) + RowSequence::recompute(row);
    }
}

void lsNodes::markDisplayed(const lsNodePtr &row) {
    TreeEdits::note();
    // A row that already carries the flag is remembered already, or was put from outside (and
    // the next clearing visits every row).
    if (row->m_Displayed)
        return;
    row->m_Displayed = true;
    m_displayed.push_back(row);
}

void lsNodes::ClearDisplayed() {
    TreeEdits::note();
    if (lsNode::s_displayedPuts != m_displayedPuts) {
        m_displayedPuts = lsNode::s_displayedPuts;
        for (const lsNodePtr &node : m_order)
            node->m_Displayed = false;
    } else {
        // A row that has left the collection keeps its flag, as a walk of the rows would.
        for (const std::weak_ptr<lsNode> &weak : m_displayed)
            if (const lsNodePtr node = weak.lock(); node && node->block())
                node->m_Displayed = false;
    }
    m_displayed.clear();
}
