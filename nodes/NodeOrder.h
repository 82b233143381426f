#pragma once
// The rows of a node collection in tree order. Position i holds the node whose `Index` is i, and
// renumbering walks the tree in pre-order (a node, its children's subtrees, then its next
// sibling). The collection reaches its rows only through this class, so the way positions are
// stored and renumbered can change without any change of behaviour.

#include "KeyedCollection.h"
#include "lsNode.h"

class NodeOrder {
public:
    using const_iterator = KeyedCollection<lsNode>::const_iterator;

    // Sets `Index` 1, 2, ... on the nodes in pre-order from `root`; returns the next number
    // (the node count + 1, or 1 for no root).
    qint32 renumber(const lsNodePtr &root);

    // Number of stored nodes.
    qint32 count() const { return m_items.count(); }
    // The node at a 1-based position, or null when out of range.
    lsNodePtr at(qint32 position) const { return m_items.at(position); }
    // The node a position or key names, or null when it names none or is of the wrong type.
    lsNodePtr item(const QVariant &indexKey) const { return m_items.item(indexKey); }

    // Stores a node before a 1-based position (past the end appends) under a key ("" for none).
    // A duplicate key raises the duplicate-key error and stores nothing.
    void insert(const lsNodePtr &node, const QString &key, qint32 before);
    // Drops the node at a 1-based position; out of range raises the invalid-argument error.
    void removeAt(qint32 position) { m_items.removeAt(position); }
    // Drops every node.
    void clear() { m_items.clear(); }

    // Iteration over the nodes in position order.
    const_iterator begin() const { return m_items.begin(); }
    const_iterator end() const { return m_items.end(); }

    // The link that holds the node after `node` in pre-order: its first child, else its next
    // sibling, else the next sibling of its nearest ancestor that has one; null at the end.
    static const lsNodePtr *nextLink(const lsNode *node);
    // The node after `node` in pre-order, or null at the end of the tree.
    static lsNode *nextInPreOrder(const lsNode *node) {
        const lsNodePtr *link = nextLink(node);
        return link ? link->get() : nullptr;
    }

private:
    KeyedCollection<lsNode> m_items;
};
