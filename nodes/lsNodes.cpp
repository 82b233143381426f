#include "lsNodes.h"

#include "RowAllocation.h"
#include "TreeListError.h"
#include "TreeWalk.h"

#include <vector>

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
    m_order.resolvePending();
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
                m_order.unsettle(*node);
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
        return TreeWalk::lastInSubtree(relative.get());
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
        return prev ? TreeWalk::lastInSubtree(prev.get()) : parent.get();
    }
    default: { // lsChild
        const lsNodePtr lastChild = relative->LastChild();
        const lsNode *previous =
            lastChild ? TreeWalk::lastInSubtree(lastChild.get()) : relative.get();
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

lsNodePtr lsNodes::at(qint32 position) const {
    return m_order.at(position);
}

lsNodes::const_iterator lsNodes::begin() const {
    return const_iterator(this, 1);
}

lsNodes::const_iterator lsNodes::end() const {
    return const_iterator(this, m_order.count() + 1);
}

qint32 lsNodes::VisibleRowsUpTo(qint32 Position) const {
    return m_order.visibleUpTo(Position);
}

lsNodePtr lsNodes::VisibleRowAt(qint32 k) const {
    return m_order.visibleRow(k);
}

void lsNodes::check() const {
    m_order.check();
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
    const lsNodePtr *link = TreeWalk::nextLink(m_cursor.get());
    // A hidden row is passed over, but its children are still looked at in turn.
    while (link && OnlyVisibleNode && !(*link)->Visible())
        link = TreeWalk::nextLink(link->get());
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
    if (RowOwner *other = Node->owner(); other && !m_order.tree().contains(Node.get()))
        other->resolvePending();
    Node->putExpanded(value);
    SetVisibility(Node);
}

bool lsNodes::Expanded(const lsNodePtr &Node) const {
    return Node && Node->Expanded();
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
    if (m_order.tree().contains(Node.get())) {
        m_order.visibility().update(Node.get());
    } else {
        // A row of another collection or out of any: walk to the end of its tree as its links go.
        for (lsNode *node = Node.get(); node; node = TreeWalk::next(node)) {
            const lsNodePtr parent = node->Parent();
            node->putVisible(!parent || (parent->Visible() && parent->Expanded()));
        }
    }
    // The walk ran on the shared cursor and ended, so a walk in progress is gone.
    m_walkStart.reset();
    m_cursor.reset();
    return false;
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
            if (const lsNodePtr node = weak.lock(); node && node->owner())
                node->m_Displayed = false;
    }
    m_displayed.clear();
}
