#pragma once
// Steps of a pre-order walk along the links of rows: a row, its children's subtrees, then its
// next sibling.

#include "lsNode.h"

namespace TreeWalk {

// The link that holds the row after `node`: its first child, else its next sibling, else the
// next sibling of its nearest ancestor that has one; null at the end of the tree.
const lsNodePtr *nextLink(const lsNode *node);
// The row after `node`, or null at the end of the tree.
lsNode *next(const lsNode *node);
// The row after `node`'s subtree in a walk that never leaves the subtree of `top`.
lsNode *nextPastSubtree(const lsNode *node, const lsNode *top);
// The row after `node` in a walk that never leaves the subtree of `top`.
lsNode *nextInSubtree(const lsNode *node, const lsNode *top);
// The last row of `node`'s subtree.
const lsNode *lastInSubtree(const lsNode *node);

} // namespace TreeWalk
