#include "TreeWalk.h"

namespace TreeWalk {

const lsNodePtr *nextLink(const lsNode *node) {
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

lsNode *next(const lsNode *node) {
    const lsNodePtr *link = nextLink(node);
    return link ? link->get() : nullptr;
}

lsNode *nextPastSubtree(const lsNode *node, const lsNode *top) {
    while (node && node != top) {
        if (node->NextSibling())
            return node->NextSibling().get();
        node = node->Parent().get();
    }
    return nullptr;
}

lsNode *nextInSubtree(const lsNode *node, const lsNode *top) {
    return node->Child() ? node->Child().get() : nextPastSubtree(node, top);
}

const lsNode *lastInSubtree(const lsNode *node) {
    while (node->LastChild())
        node = node->LastChild().get();
    return node;
}

} // namespace TreeWalk
