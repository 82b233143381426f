#include "NodeOrder.h"

qint32 NodeOrder::renumber(const lsNodePtr &root) {
    qint32 counter = 1;
    for (lsNode *node = root.get(); node; node = nextInPreOrder(node))
        node->setIndex(counter++);
    return counter;
}

void NodeOrder::insert(const lsNodePtr &node, const QString &key, qint32 before) {
    m_items.insert(node, key, before);
}

const lsNodePtr *NodeOrder::nextLink(const lsNode *node) {
    if (node->Child())
        return &node->Child();
    if (node->NextSibling())
        return &node->NextSibling();
    // The tree owns every ancestor, so the link outlives the temporary lock.
    for (lsNodePtr up = node->Parent(); up; up = up->Parent()) {
        if (up->NextSibling())
            return &up->NextSibling();
    }
    return nullptr;
}
